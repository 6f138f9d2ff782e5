#include "tests/library/wild/WildPlatform.h"

#include <Vexo.h>

#include <algorithm>
#include <limits>

#include "com/server/ByReference.h"
#include "companion/recorder/PlatformCalls.h"
#include "companion/recorder/RecordingObject.h"
#include "foundation/packages/NewContainer.h"
#include "tests/support/Foreign.h"

namespace tavio::test::wild {
namespace {

using Integer = std::numeric_limits<std::int32_t>;

constexpr std::size_t kLongestText = 300;

void (*callBack)() = nullptr;
std::wstring created;  // the last component

// While a recording runs, it stands before each component.
HRESULT WINAPI Create(REFCLSID id, IUnknown* outer, DWORD context, REFIID iid, void** object) {
  created.clear();
  ComPtr<IDispatch> made, recorded;
  const HRESULT outcome = CoCreateInstance(id, outer, context, IID_PPV_ARGS(&made));
  if (FAILED(outcome)) return outcome;
  const auto known = std::ranges::find(companion::PlatformComponents(), created);
  if (!companion::Recording::Running() || known == companion::PlatformComponents().end()) {
    return made->QueryInterface(iid, object);
  }
  *recorded.GetAddressOf() = new companion::RecordingObject(*known, std::move(made));
  return recorded->QueryInterface(iid, object);
}

// What decides how long something takes, or what a user reads, is never just anything.
Value Answer(const std::wstring& member) {
  const std::int32_t counts[] = {0, 1, 2, 3, -1, 40'000};
  if (member == L"LoadString") return Value(L"");
  if (member == L"IsEnabled") return Value(true);  // or it would not be asked again
  const bool counted = member == L"Count" || member == L"UBound" || member == L"Size";
  return counted ? Value(dice.Of(counts)) : values.Any();
}

ComPtr<IDispatch> Watched(const ComPtr<IDispatch>& real) {
  ForeignContainer container(real);
  container.Name(L"container");
  return container.New();
}

INT_PTR WINAPI AnswerDialog(HINSTANCE, LPCDLGTEMPLATEW, HWND, DLGPROC, LPARAM) {
  const INT_PTR answers[] = {IDOK, IDCANCEL, 0, -1};
  for (auto calls = dice.Below(4); calls > 0; --calls) callBack();
  return dice.Of(answers);
}

void Dissolve(const Value& value) try {
  ComPtr<_Dictionary> record;
  ComPtr<_Vector> list;
  if (!value.HoldsObject()) return;
  if (SUCCEEDED(value.Raw().punkVal->QueryInterface(IID_PPV_ARGS(&list)))) {
    const Vector items(value);
    for (std::int32_t i = 1; i <= items.Count(); ++i) Dissolve(*items.Item(i));
  }
  if (FAILED(value.Raw().punkVal->QueryInterface(IID_PPV_ARGS(&record)))) return;
  const Dictionary fields(value);
  while (fields.Count() > 0) {
    const Key name(fields.Name(1));
    const Value held = fields.Get(name)->Copy();
    fields.Remove(name);
    Dissolve(held);
  }
} catch (const Error&) {
}

// The host's code runs too when it is let go.
Item Farewell() {
  return LastWords([] { callBack(); });
}

Item Code(const wchar_t* code) { return Action(L"action", code, 0); }

}  // namespace

Dictionary Package() {
  return Record({{L"FID", 5},
                 {L"own", Farewell()},
                 {L"FTitle", L"[FBillNo]"},
                 {L"FMessage", L"a[FBillNo]b["},
                 {L"FAccessoryForEmail", 1},
                 {L"MessageUsers", Users(L"users", {3, 4})},
                 {L"EmailUsers", Users(L"users", {3, 4})},
                 {L"SMSUsers", Users(L"users", {3, 4})}});
}

Dictionary Template() { return Record({{L"FID", 7}, {L"FBillTypeID", 1}, {L"FName_chs", L"x"}, {L"own", Farewell()}}); }

Dictionary FieldInfo() {
  return Record(
      {{L"Page1",
        Record({{L"FBillNo", Record({{L"FName", L"FBillNo"}, {L"FCaption", L"单号"}, {L"own", Farewell()}})}})}});
}

Dictionary Bill() {
  return Record({{L"FID", 5}, {L"own", Farewell()}, {L"Page1", Record({{L"FBillNo", L"No. 5"}, {L"FUser", 4}})}});
}

void Values::Renew() {
  const auto add = [&](const Item& item) { values_.push_back(item.value.Copy()); };
  for (const auto& scalar : {Value(true), Short(-1), Value(), Value::Missing()}) add(scalar);
  for (const auto* text : {L"", L"Save", L"12", L"a[FBillNo]b[", L"True", L"1e400", L"mnuEditUse"}) add(text);
  for (const auto number : {0, 1, 7, -1, Integer::max(), Integer::min()}) add(number);
  for (const auto number : {2.5, 1e300, std::numeric_limits<double>::quiet_NaN()}) add(number);
  add(Value::Integers(std::vector{1, 2}));
  add(Value::Bytes({}));
  for (const VARTYPE type :
       {VT_NULL, VT_BSTR, VT_UNKNOWN, VT_DISPATCH, VT_DATE, VT_CY, VT_DECIMAL, VT_I8, VT_UI4, VT_UI1, VT_ERROR}) {
    VARIANT variant = {};
    variant.vt = type;
    add(Value::In(variant));
  }
  for (const auto& list : {List({}), List({Code(L"a"), Package()}), List({3, L"3"})}) add(list);
  for (const auto& record :
       {Record({}), Action(L"action", L"Save", 0), Record({{L"Save", Code(L"Save")}, {L"Check", Code(L"Check")}}),
        Package(), Template(), Bill(), FieldInfo(), Users(L"users", {3, 4}),
        Record({{L"FName", L"FBillNo"}, {L"FCaption", L"单号"}, {L"a", List({1})}})}) {
    for (const auto& object : {record.Object(), ForeignRecord(record).New(), Watched(record.Object())}) add(object);
  }
}

Value Values::Any(VARTYPE wanted) const {
  const auto* value = &values_[dice.Below(values_.size())];
  for (int tries = 20; tries > 0 && wanted != VT_VARIANT && value->Type() != wanted; --tries) {
    value = &values_[dice.Below(values_.size())];
  }
  return value->Copy();
}

void Values::Keep(Value value) {
  if (value.IsText() && ViewOf(value.Raw().bstrVal).size() > kLongestText) return;
  values_.push_back(std::move(value));
}

void Values::Clear() {
  const auto last = std::exchange(values_, {});
  for (const auto& value : last) Dissolve(value);
  ForgetContainerFactories();
}

WildPlatform::WildPlatform(HMODULE module, int(WINAPI* box)(HWND, LPCWSTR, LPCWSTR, UINT), void (*called)()) {
  callBack = called;
  props_.props = L"Language=chs;UserID=16394;ConnectString={a;b};";
  hooks_.emplace_back(module, "MessageBoxW", reinterpret_cast<void*>(box));
  hooks_.emplace_back(module, "DialogBoxIndirectParamW", reinterpret_cast<void*>(AnswerDialog));
  hooks_.emplace_back(module, "CoCreateInstance", reinterpret_cast<void*>(Create));
}

void WildPlatform::Forget() { platform_.Forget(), log_.Forget(); }

bool WildPlatform::Creates(const std::wstring& object) {
  created = object;
  return !dice.OneIn(30);
}

bool WildPlatform::Finds(const std::wstring&, const std::wstring&) { return !dice.OneIn(40); }

Value WildPlatform::Calls(const std::wstring&, const std::wstring& member, bool, Arguments& arguments,
                          const LateBound::Method& real) {
  constexpr HRESULT kFailures[] = {kPlatformError,      5, DISP_E_MEMBERNOTFOUND, E_OUTOFMEMORY, DISP_E_TYPEMISMATCH,
                                   DISP_E_BADPARAMCOUNT};
  if (dice.OneIn(8)) callBack();
  if (dice.OneIn(20)) throw Error(dice.Of(kFailures), L"Platform", dice.OneIn(2) ? L"断开" : L"");
  Value answer = dice.OneIn(15) || member == L"SetList" ? Answer(member) : real(arguments);
  for (std::size_t i = 0; i < arguments.Count(); ++i) {
    if (dice.OneIn(20)) com::StoreInto(arguments.Raw(i), values.Any());
    if (dice.OneIn(20)) values.Keep(Value::CopyOf(arguments.Raw(i)));
  }
  return answer;
}

}  // namespace tavio::test::wild
