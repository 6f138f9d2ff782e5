#include "bench/Library.h"

#include <string>

#include "foundation/values/OwnModule.h"
#include "tests/support/Server.h"

namespace tavio::bench {

ComPtr<IDispatch> NewObject(REFCLSID id) {
  static const HMODULE library = LoadLibraryW((GetAppFolder() + L"TavioClassBillAction.dll").c_str());
  CheckWindows(library != nullptr);
  return test::Make(library, id);
}

ComPtr<_Message> NewBoundMessage() {
  const auto message = NewMessage();
  const auto empty = Dictionary::New();
  Check(message->putref_ClassType(empty.Object().Get()));
  Check(message->putref_TableInfo(empty.Object().Get()));
  Check(message->NewMessage());
  return message;
}

void AddVariable(const ComPtr<_Message>& message, const Text& name, const Text& caption, const Text& value) {
  const auto variable = Dictionary::New();
  variable.Set(L"FName"_key, Value(TextView(name)));
  variable.Set(L"FCaption"_key, Value(TextView(caption)));
  variable.Set(L"FValue"_key, Value(TextView(value)));
  VARIANT_BOOL added = VARIANT_FALSE;
  Check(message->AddVariable(variable.Object().Get(), &added));
}

ComPtr<IDispatch> HostBox::Over(const ComPtr<IDispatch>& package, Maker maker) {
  if (maker == Maker::kOurs) return package;
  ComPtr<IDispatch> box;
  *box.GetAddressOf() = new HostBox(package, maker);
  return box;
}

STDMETHODIMP HostBox::QueryInterface(REFIID iid, void** object) {
  const bool published = maker_ == Maker::kPublished && iid == __uuidof(_Dictionary);
  return published ? real_->QueryInterface(iid, object) : com::ComObject<IDispatch>::QueryInterface(iid, object);
}

Text CodeOf(std::int32_t number) { return L"Action" + std::to_wstring(number); }

ComPtr<IDispatch> Actions(std::int32_t count, Maker maker) {
  const auto actions = Dictionary::New();
  for (std::int32_t i = 1; i <= count; ++i) {
    const auto code = CodeOf(i);
    const auto action = Dictionary::New();
    action.Set(L"FID"_key, Value(i));
    action.Set(L"FCode"_key, Value(TextView(code)));
    action.Set(L"FStatus"_key, Value(std::int32_t{0}));
    action.Set(L"FEnvironment"_key, Value(std::int32_t{1}));
    actions.Set(Key(TextView(code)), Value(HostBox::Over(action.Object(), maker)));
  }
  return HostBox::Over(actions.Object(), maker);
}

}  // namespace tavio::bench
