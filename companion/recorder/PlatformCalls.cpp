#include "companion/recorder/PlatformCalls.h"

#include <algorithm>
#include <cwchar>

#include "companion/recorder/SelectOnly.h"

namespace tavio::companion {
namespace {

constexpr const wchar_t* kComponents[] = {
    L"TavioSharedProps.PropStore",
    kLog,
    L"TavioResLoader.Loader",
    L"TavioFormText.FormTextLoader",
    L"TavioMClass.ClassInfo",
    L"TavioMClass.ClassDefineUpdate",
    L"TavioAppCommand.Command",
    L"TavioMBOSMultiCheck.BillInfo",
    L"TavioMSmsManager.clsBillUseInfo",
    L"TavioClassBillPrint.clsNotePrint",
    L"TavioClientBase.UserProfile",
    L"TavioServerBase.UserProfile",
    L"MorlaMobileOpen.MorlaSendMail",
    L"MorlaMobileOpen.MobileOpen",
    L"Jmail.Message",
};

constexpr const wchar_t* kGuarded[] = {
    L"TavioMClass.ClassInfo",  // it runs whatever SQL it is given
    L"TavioMClass.ClassDefineUpdate",   L"TavioAppCommand.Command",    L"TavioClassBillPrint.clsNotePrint",
    L"MorlaMobileOpen.MorlaSendMail",   L"MorlaMobileOpen.MobileOpen", L"Jmail.Message",
    L"TavioMSmsManager.clsBillUseInfo",
};

enum class When { kRead, kReadAndAssigned, kSelect };

struct Reading {
  const wchar_t* progId;
  const wchar_t* member;
  When when = When::kRead;
};

constexpr Reading kReadings[] = {
    {L"TavioSharedProps.PropStore", L"GetProperty"},
    {kLog, L"IsEnabled"},
    {L"TavioResLoader.Loader", L"ResFileBaseName", When::kReadAndAssigned},
    {L"TavioResLoader.Loader", L"LanguageID", When::kReadAndAssigned},
    {L"TavioResLoader.Loader", L"LoadString"},
    {L"TavioFormText.FormTextLoader", L"LoadFrmResStrings"},
    {L"TavioMClass.ClassInfo", L"GetBillActions"},
    {L"TavioMClass.ClassInfo", L"getpredefineactions"},
    {L"TavioMClass.ClassInfo", L"GetBillEnvironments"},
    {L"TavioMClass.ClassInfo", L"GetClassMenu"},
    {L"TavioMClass.ClassInfo", L"GetClassType"},
    {L"TavioMClass.ClassInfo", L"GetTableInfo"},
    {L"TavioMClass.ClassInfo", L"GetClassTypeEntry"},
    {L"TavioMClass.ClassInfo", L"GetBillData"},
    {L"TavioMClass.ClassInfo", L"GetData", When::kSelect},
    {L"TavioMBOSMultiCheck.BillInfo", L"GetUsers"},
    {L"TavioMSmsManager.clsBillUseInfo", L"GetUserInfo"},
    {L"TavioMSmsManager.clsBillUseInfo", L"UserInfoEx"},
    {L"TavioMSmsManager.clsBillUseInfo", L"GetIsUserNeedSend"},
    {L"TavioClientBase.UserProfile", L"UserIndependent", When::kReadAndAssigned},
    {L"TavioClientBase.UserProfile", L"Load"},
    {L"TavioServerBase.UserProfile", L"LoadUserProfile"},
};

// A record set without records.
class NoRecords final : public com::LateBound {
 public:
  NoRecords() {
    Add(L"EOF", [](com::Arguments&) { return Value(true); });
    Add(L"RecordCount", [](com::Arguments&) { return Value(std::int32_t{0}); });
  }
};

Value EmptyRecordSet() {
  ComPtr<IDispatch> records;
  *records.GetAddressOf() = new NoRecords;  // with the reference that it starts with
  return Value(std::move(records));
}

struct Instead {
  const wchar_t* progId;
  const wchar_t* member;
  Value (*answer)();
};

const Instead kInsteads[] = {
    {L"MorlaMobileOpen.MorlaSendMail", L"MorlaSendMail", [] { return Value(L""); }},
    {L"MorlaMobileOpen.MobileOpen", L"SmsSendForBillCheck", [] { return Value(true); }},
    {L"Jmail.Message", L"Send", [] { return Value(true); }},
    {L"TavioClassBillPrint.clsNotePrint", L"CreatePDFFile", [] { return Value(true); }},
    {L"TavioMClass.ClassDefineUpdate", L"SaveBillActions", [] { return Value(true); }},
    {L"TavioMClass.ClassInfo", L"GetData", &EmptyRecordSet},
};

template <class Row>
const Row* Find(std::span<const Row> rows, const wchar_t* progId, TextView member) noexcept {
  const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) {
    return std::wcscmp(row.progId, progId) == 0 && EqualsName(member, row.member);
  });
  return found == rows.end() ? nullptr : &*found;
}

}  // namespace

std::span<const wchar_t* const> PlatformComponents() noexcept { return kComponents; }
std::span<const wchar_t* const> GuardedComponents() noexcept { return kGuarded; }

bool EqualsName(TextView name, const wchar_t* other) noexcept {
  return name.size() == std::wcslen(other) && _wcsnicmp(name.data(), other, name.size()) == 0;
}

bool OnlyReads(const wchar_t* progId, TextView member, bool assigns, const com::Arguments& arguments) {
  const auto* reading = Find<Reading>(kReadings, progId, member);
  if (!reading) return false;
  if (assigns) return reading->when == When::kReadAndAssigned;
  return reading->when != When::kSelect || IsSelectOnly(arguments.OrEmpty(1).ToText());
}

Value AnswerInstead(const wchar_t* progId, TextView member, const com::Arguments& arguments) {
  if (EqualsName(member, L"CreatePDFFile") && arguments.Count() > 0) arguments.Return(0, Value(kPlaceholderPath));
  const auto* instead = Find<Instead>(kInsteads, progId, member);
  return instead ? instead->answer() : Value();
}

}  // namespace tavio::companion
