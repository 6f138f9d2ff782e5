#include "tests/library/wild/WildPlatform.h"

#include <Vexo.h>

#include <algorithm>
#include <limits>
#include <map>

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
IDispatch* kept = nullptr;
std::vector<std::wstring> names;  // of members and components; identifiers are places in it

std::size_t PlaceOf(const wchar_t* name) {
  const auto known = std::ranges::find(names, name);
  if (known != names.end()) return static_cast<std::size_t>(known - names.begin());
  names.emplace_back(name);
  return names.size() - 1;
}

Dictionary Action(const wchar_t* code) {
  return Record({{L"FCode", code}, {L"FEnvironment", 3}, {L"FID", 7}, {L"FBillType", 1}, {L"Messages", Record({})}});
}

Dictionary Users() { return Record({{L"3", Record({{L"FUserID", 3}})}, {L"4", Record({{L"FUserType", L"G"}})}}); }

Dictionary Actions() { return Record({{L"Save", Action(L"Save")}, {L"Check", Action(L"Check")}}); }

Item Lists() {
  return List({Action(L"Save"), Record({{L"FMask", 3}, {L"FID", 1}}),
               Record({{L"FUserID", 3}, {L"Email", L"a@b"}, {L"Mobile", L"1"}, {L"FIsNeedSend", 1}})});
}

class WildObject;
Item New();

// What decides how long something takes, or what a user reads, is never just anything.
Item Answer(const std::wstring& member) {
  const std::int32_t counts[] = {0, 1, 2, 3, -1, 40'000};
  if (member == L"LoadString") return dice.OneIn(10) ? L"" : L"«»";
  if (member == L"EOF") return dice.OneIn(2);
  if (member == L"IsEnabled") return true;  // or it would not be asked again
  if (member == L"Count" || member == L"UBound" || member == L"Size") return dice.Of(counts);
  if (dice.OneIn(10)) return values.Any();
  static const std::map<std::wstring, Item (*)()> meant = {
      {L"GetProperty", [] { return Item(L"Language=chs;UserID=16394;ConnectString={a;b};"); }},
      {L"LogStart", [] { return Item(1); }},
      {L"GetBillActions", [] { return Item(Actions()); }},
      {L"getpredefineactions", Lists},
      {L"GetDefaultActions", Lists},
      {L"GetBillEnvironments", Lists},
      {L"GetUserInfo", Lists},
      {L"GetIsUserNeedSend", Lists},
      {L"GetClassMenu", [] { return Item(Action(L"Save")); }},
      {L"GetData", New},
      {L"GetUsers", New},
      {L"Fields", New},
      {L"Item", New},
      {L"GetFile", New},
      {L"Value", [] { return Item(3); }},
      {L"CreatePDFFile", [] { return Item(true); }},
      {L"Load",
       [] {
         return Item(Record({{L"txtMailSrv", L"host"}, {L"txtMailAddr", L"a@b"}}));
       }},
  };
  const auto found = meant.find(member);
  return found == meant.end() ? Value() : found->second();
}

HRESULT Fail(EXCEPINFO* info) {
  constexpr HRESULT kPlain[] = {DISP_E_MEMBERNOTFOUND, E_OUTOFMEMORY, DISP_E_TYPEMISMATCH, DISP_E_BADPARAMCOUNT};
  if (!info || dice.OneIn(3)) return dice.Of(kPlain);
  *info = {};
  info->scode = dice.OneIn(2) ? kPlatformError : 5;
  info->bstrDescription = dice.OneIn(2) ? SysAllocString(L"断开") : nullptr;
  return DISP_E_EXCEPTION;
}

// A component, or a container over a real one, that knows every member and answers as it is meant to, mostly.
class WildObject final : public com::ComObject<IDispatch> {
 public:
  explicit WildObject(ComPtr<IDispatch> real = nullptr) : real_(std::move(real)) { ++living; }
  ~WildObject() override { --living; }

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* asked, UINT count, LCID, DISPID* ids) override {
    for (UINT i = 0; i < count; ++i) ids[i] = static_cast<DISPID>(PlaceOf(asked[i]) + 1);
    return dice.OneIn(40) ? DISP_E_UNKNOWNNAME : S_OK;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given, VARIANT* result, EXCEPINFO* info,
                      UINT* wrong) override {
    const ComPtr<IDispatch> held(this);
    if (dice.OneIn(8)) callBack();
    for (UINT i = 0; i < given->cArgs; ++i) {
      if (dice.OneIn(20)) com::StoreInto(given->rgvarg[i], values.Any());
      if (dice.OneIn(20)) values.Keep(Value::CopyOf(given->rgvarg[i]));
    }
    if (dice.OneIn(20)) return Fail(info);
    auto name = id > 0 ? names[static_cast<std::size_t>(id - 1)] : L"Value";
    DISPID there = DISPID_UNKNOWN;
    auto* member = name.data();
    if (real_ && !dice.OneIn(20) && SUCCEEDED(real_->GetIDsOfNames(IID_NULL, &member, 1, 0, &there))) {
      return real_->Invoke(there, IID_NULL, 0, flags, given, result, info, wrong);
    }
    if (result) *result = Answer(name).value.Detach();
    return S_OK;
  }

  static inline long living = 0;

 private:
  ComPtr<IDispatch> real_;
};

ComPtr<IDispatch> NewObject(const ComPtr<IDispatch>& real = nullptr) {
  ComPtr<IDispatch> object;
  *object.GetAddressOf() = new WildObject(real);
  return object;
}

Item New() { return NewObject(); }

class WildFactory final : public com::ComObject<IClassFactory> {
 public:
  explicit WildFactory(Container kind) noexcept : kind_(kind) {}

  STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override {
    return dice.OneIn(40) ? E_OUTOFMEMORY : NewContainer(kind_)->QueryInterface(iid, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

 private:
  Container kind_;
};

HRESULT WINAPI FindClass(LPCOLESTR progId, CLSID* id) {
  *id = {static_cast<unsigned long>(PlaceOf(progId)), 0x7e0f, 0, {}};
  return dice.OneIn(30) ? CO_E_CLASSSTRING : S_OK;
}

// While a recording runs, it stands before each component.
ComPtr<IDispatch> Recorded(const std::wstring& name, ComPtr<IDispatch> real) {
  const auto known = std::ranges::find(companion::PlatformComponents(), name);
  if (!companion::Recording::Running() || known == companion::PlatformComponents().end()) return real;
  ComPtr<IDispatch> recorded;
  *recorded.GetAddressOf() = new companion::RecordingObject(*known, std::move(real));
  return recorded;
}

HRESULT WINAPI MakeObject(REFCLSID id, IUnknown*, DWORD, REFIID iid, void** object) {
  const auto& name = names[id.Data1];
  const bool isKept = name == L"MorlaLogMsg.Log" || name == L"TavioResLoader.Loader";
  if (dice.OneIn(30)) return REGDB_E_CLASSNOTREG;
  return Recorded(name, isKept ? kept : NewObject())->QueryInterface(iid, object);
}

// Of the containers. If it fails, the library takes those that lie beside it.
HRESULT WINAPI FindFactory(REFCLSID id, DWORD, LPVOID, REFIID iid, LPVOID* factory) {
  if (dice.OneIn(4)) return REGDB_E_CLASSNOTREG;
  ComPtr<IClassFactory> made;
  *made.GetAddressOf() =
      new WildFactory(names[id.Data1] == L"Vexo.Vector" ? Container::kVector : Container::kDictionary);
  return made->QueryInterface(iid, factory);
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

}  // namespace

Dictionary Package() {
  return Record({{L"FID", 5},
                 {L"FTitle", L"[FBillNo]"},
                 {L"FMessage", L"a[FBillNo]b["},
                 {L"FAccessoryForEmail", 1},
                 {L"MessageUsers", Users()},
                 {L"EmailUsers", Users()},
                 {L"SMSUsers", Users()}});
}

Dictionary Template() { return Record({{L"FID", 7}, {L"FBillTypeID", 1}, {L"FName_chs", L"x"}}); }

Dictionary FieldInfo() {
  return Record({{L"Page1", Record({{L"FBillNo", Record({{L"FName", L"FBillNo"}, {L"FCaption", L"单号"}})}})}});
}

Dictionary Bill() { return Record({{L"FID", 5}, {L"Page1", Record({{L"FBillNo", L"No. 5"}, {L"FUser", 4}})}}); }

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
  for (const auto& list : {List({}), List({Action(L"a"), Package()}), List({3, L"3"})}) add(list);
  for (const auto& record : {Record({}), Action(L"Save"), Actions(), Package(), Template(), Bill(), FieldInfo(),
                             Users(), Record({{L"FName", L"FBillNo"}, {L"FCaption", L"单号"}, {L"a", List({1})}})}) {
    for (const auto& object : {record.Object(), ForeignRecord(record).New(), NewObject(record.Object())}) add(object);
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

Platform::Platform(int(WINAPI* box)(HWND, LPCWSTR, LPCWSTR, UINT), void (*called)())
    : box_(reinterpret_cast<void*>(box)) {
  callBack = called;
  kept = NewObject().Detach();
}

Platform::~Platform() { kept->Release(); }

void Platform::Meet(HMODULE module) {
  hooks_.emplace_back(module, "MessageBoxW", box_);
  hooks_.emplace_back(module, "DialogBoxIndirectParamW", reinterpret_cast<void*>(AnswerDialog));
  hooks_.emplace_back(module, "CLSIDFromProgID", reinterpret_cast<void*>(FindClass));
  hooks_.emplace_back(module, "CoCreateInstance", reinterpret_cast<void*>(MakeObject));
  hooks_.emplace_back(module, "CoGetClassObject", reinterpret_cast<void*>(FindFactory));
}

long Platform::Living() noexcept { return WildObject::living - 1; }

}  // namespace tavio::test::wild
