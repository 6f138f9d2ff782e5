#include "development/environment/Data.h"

#include "development/storage/PlatformData.h"
#include "development/storage/Settings.h"
#include "development/storage/Tables.h"
#include "foundation/packages/Dictionary.h"
#include "foundation/values/CodePage.h"

namespace tavio::development {

Data::Data() {
  Add(L"Describe", [this](Arguments&) { return Describe(); });
  Add(L"Export", [this](Arguments&) { return Value(TextView(FromUtf8(DataText(ExportData(Store()))))); });
  Add(L"Import", [this](Arguments& a) {
    ImportData(Store(), ParseData(ToUtf8(a.At(0).ToText())));
    return Value();
  });
  Add(L"Reset", [this](Arguments& a) {
    Reset(a.At(0).ToText());
    return Value();
  });
  Add(L"Setting", [this](Arguments& a) { return Value(TextView(SettingOf(Store(), a.At(0).ToText()))); });
  Add(L"SetSetting", [this](Arguments& a) {
    StoreSetting(Store(), a.At(0).ToText(), a.At(1).ToText());
    return Value();
  });
}

Value Data::Describe() {
  const Dictionary counts = Dictionary::New();
  for (const auto& table : DataTables()) {
    const Text name = FromUtf8(table.name);
    counts.Set(Key(name), Store().FirstCell(L"SELECT COUNT(*) FROM " + name));
  }
  const Dictionary description = Dictionary::New();
  description.Set(L"FDatabase"_key, Value(TextView(Store().Name())));
  description.Set(L"FVersion"_key, Value(kTablesVersion));
  description.Set(L"Tables"_key, counts);
  return description.AsValue();
}

void Data::Reset(const Text& database) {
  const Text own = Store().Name();
  if (database != own) {
    throw Error(E_INVALIDARG, L"TavioDevPlatform.Data", L"要清空的数据库是 " + own + L",而不是 " + database);
  }
  ResetData(Store());
}

}  // namespace tavio::development
