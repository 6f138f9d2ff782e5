#include "tests/support/FakeComponent.h"

#include "foundation/values/Error.h"
#include "foundation/values/Text.h"

namespace tavio::test {
namespace {

long living = 0;
Breaker* breaker = nullptr;

constexpr wchar_t kClasses[] = L"Software\\Classes\\";

void RefuseForeignClass(const std::wstring& progId) {
  CLSID id;
  wchar_t text[40];
  if (FAILED(CLSIDFromProgID(progId.c_str(), &id))) return;
  StringFromGUID2(id, text, 40);
  HKEY key = nullptr;
  // Left behind by a test program that crashed, a ProgID leads to no class.
  if (RegOpenKeyW(HKEY_CLASSES_ROOT, (std::wstring(L"CLSID\\") + text).c_str(), &key) != ERROR_SUCCESS) return;
  RegCloseKey(key);
  throw Error(HRESULT_FROM_WIN32(ERROR_OBJECT_ALREADY_EXISTS), L"FakeComponent", progId);
}

// A key that goes with the system, at the latest, if the test program crashes.
void WriteProgId(const std::wstring& progId, const CLSID& id) {
  wchar_t text[40];
  const int units = StringFromGUID2(id, text, 40);
  const auto bytes = static_cast<DWORD>(static_cast<std::size_t>(units) * sizeof(wchar_t));
  const auto name = kClasses + progId + L"\\CLSID";
  HKEY key = nullptr;
  LSTATUS status = RegCreateKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, nullptr, REG_OPTION_VOLATILE, KEY_WRITE,
                                   nullptr, &key, nullptr);
  if (status == ERROR_SUCCESS) status = RegSetKeyValueW(key, nullptr, nullptr, REG_SZ, text, bytes);
  RegCloseKey(key);
  Check(HRESULT_FROM_WIN32(static_cast<unsigned long>(status)));
}

}  // namespace

long LivingFakes() noexcept { return living; }

Breaker::Breaker() noexcept { breaker = this; }
Breaker::~Breaker() { breaker = nullptr; }
Breaker* Breaker::Current() noexcept { return breaker; }

struct FakeObject::Kind {
  struct Member {
    std::wstring name;
    Method read;
    Method assign;
    int calls = 0;
  };

  std::map<std::wstring, Member> members;  // by upper-cased name
  std::wstring name;
  IID shown = IID_NULL;
  ComPtr<IDispatch> real;
  int created = 0;
  int living = 0;
};

// One object of a fake.
class FakeInstance final : public LateBound {
 public:
  explicit FakeInstance(std::shared_ptr<FakeObject::Kind> kind) : kind_(std::move(kind)) {
    for (auto& [name, member] : kind_->members) {
      const auto read = [this, &known = member](Arguments& arguments) {
        ++known.calls;
        const auto method = known.read;  // which may replace itself
        return Call(known.name, false, arguments, method);
      };
      const auto assign = [this, &known = member](Arguments& arguments) {
        return Call(known.name, true, arguments, known.assign);
      };
      Add(name.c_str(), read, member.assign ? Method(assign) : nullptr);
    }
    ++kind_->created;
    ++kind_->living;
    ++living;
  }
  ~FakeInstance() override {
    --kind_->living;
    --living;
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    const bool shown = kind_->real && iid == kind_->shown;
    return shown ? kind_->real->QueryInterface(iid, object) : LateBound::QueryInterface(iid, object);
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
    const HRESULT found = LateBound::GetIDsOfNames(iid, names, count, locale, ids);
    if (FAILED(found) || !IsWatched() || breaker->Finds(kind_->name, kind_->members.at(ToUpper(names[0])).name)) {
      return found;
    }
    return DISP_E_UNKNOWNNAME;
  }

  // As script objects do, of which many know one kind of assignment only.
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* info, UINT* wrongArgument) override {
    if (flags == DISPATCH_PROPERTYPUTREF) return DISP_E_MEMBERNOTFOUND;
    return LateBound::Invoke(id, iid, locale, flags, parameters, result, info, wrongArgument);
  }

  void Name(std::wstring name) { kind_->name = std::move(name); }

 private:
  bool IsWatched() const noexcept { return breaker && !kind_->name.empty(); }
  Value Call(const std::wstring& member, bool assigns, Arguments& arguments, const Method& method) const {
    return IsWatched() ? breaker->Calls(kind_->name, member, assigns, arguments, method) : method(arguments);
  }

  std::shared_ptr<FakeObject::Kind> kind_;
};

namespace {

class FakeFactory final : public com::ComObject<IClassFactory> {
 public:
  FakeFactory(FakeObject& fake, const std::wstring& name) noexcept : fake_(fake), name_(name) {}

  STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override {
    if (breaker && !breaker->Creates(name_)) return E_FAIL;
    return fake_.New()->QueryInterface(iid, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

 private:
  FakeObject& fake_;
  const std::wstring& name_;
};

}  // namespace

FakeObject::FakeObject() : kind_(std::make_shared<Kind>()) {}

void FakeObject::Put(const wchar_t* member, Method read, Method assign) {
  auto& known = kind_->members[ToUpper(member)];
  known.name = member;
  known.read = std::move(read);
  known.assign = std::move(assign);
}

void FakeObject::AnswerFor(const IID& id, ComPtr<IDispatch> real) {
  kind_->shown = id;
  kind_->real = std::move(real);
}

ComPtr<IDispatch> FakeObject::New() {
  ComPtr<IDispatch> object;
  *object.GetAddressOf() = new FakeInstance(kind_);  // not Attach, which adds a reference in some compilers' headers
  return object;
}

void FakeObject::Name(std::wstring name) { kind_->name = std::move(name); }

void FakeObject::Name(IDispatch* object, std::wstring name) {
  static_cast<FakeInstance*>(object)->Name(std::move(name));
}

int FakeObject::Created() const noexcept { return kind_->created; }
int FakeObject::Living() const noexcept { return kind_->living; }

int FakeObject::Calls(const wchar_t* member) const {
  const auto found = kind_->members.find(ToUpper(member));
  return found == kind_->members.end() ? 0 : found->second.calls;
}

FakeComponent::FakeComponent(const wchar_t* progId, Place place) : progId_(progId), place_(place) {
  Name(progId_);
  CLSID id;
  if (place_ == Place::kEmpty) RefuseForeignClass(progId_);
  Check(place_ == Place::kEmpty ? CoCreateGuid(&id) : CLSIDFromProgID(progId, &id));
  ComPtr<IClassFactory> factory;
  *factory.GetAddressOf() = new FakeFactory(*this, progId_);
  Check(CoRegisterClassObject(id, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_));
  if (place_ == Place::kEmpty) WriteProgId(progId_, id);
}

FakeComponent::~FakeComponent() {
  if (place_ == Place::kEmpty) RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kClasses + progId_).c_str());
  CoRevokeClassObject(cookie_);
}

ComPtr<IDispatch> LastWords(std::function<void()> said) {
  class Dying final : public LateBound {
   public:
    explicit Dying(std::function<void()> said) : said_(std::move(said)) {}
    ~Dying() override { said_(); }

   private:
    std::function<void()> said_;
  };
  ComPtr<IDispatch> object;
  *object.GetAddressOf() = new Dying(std::move(said));
  return object;
}

LateBound::Method Failing(const wchar_t* description) {
  return
      [description](Arguments&) -> Value { throw Error(static_cast<HRESULT>(0x80040123), L"Platform", description); };
}

}  // namespace tavio::test
