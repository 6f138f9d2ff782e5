#include "tests/support/Platform.h"

#include <Vexo.h>

#include <filesystem>
#include <fstream>

#include "foundation/packages/NewContainer.h"
#include "foundation/values/OwnModule.h"
#include "tests/support/Foreign.h"
#include "tests/support/Server.h"

namespace tavio::test {

// The interface of ADODB.Stream, as far as the last member that is called.
template <class Base, int count>
struct Uncalled : Uncalled<Base, count - 1> {
  virtual HRESULT STDMETHODCALLTYPE Skip(Uncalled*) { return E_NOTIMPL; }
};
template <class Base>
struct Uncalled<Base, 0> : Base {};
struct StreamToType : Uncalled<IDispatch, 5> {
  virtual HRESULT STDMETHODCALLTYPE put_Type(LONG type) = 0;
};
struct StreamToOpen : Uncalled<StreamToType, 8> {
  virtual HRESULT STDMETHODCALLTYPE Open(VARIANT source, LONG mode, LONG options, BSTR user, BSTR password) = 0;
};
struct StreamToWrite : Uncalled<StreamToOpen, 2> {
  virtual HRESULT STDMETHODCALLTYPE Write(VARIANT bytes) = 0;
};
struct StreamMembers : Uncalled<StreamToWrite, 3> {
  virtual HRESULT STDMETHODCALLTYPE SaveToFile(BSTR path, LONG option) = 0;
};

}  // namespace tavio::test

template <>
struct tavio::com::Identity<tavio::test::StreamMembers> {
  static bool Is(REFIID iid) noexcept {
    return iid == IID{0x00000565, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x6d, 0x2e, 0xa4}};
  }
};

namespace tavio::test {
namespace {

bool hostContainers = false;

ComPtr<IDispatch> OwnContainer(const CLSID& kind) {
  static const HMODULE library = LoadLibraryW((GetAppFolder() + L"Vexo10.dll").c_str());
  return Make(library, kind);
}

ComPtr<IDispatch> HostRecord(const Dictionary& real, const wchar_t* name) {
  ForeignContainer record(real.Object());
  record.Name(name);
  record.On(L"Clone", [real] { return HostRecord(real.Clone(), L"copy"); });
  record.On(L"CloneAll", [real] { return HostRecord(real.Clone(), L"sent to"); });
  return record.New();
}

ComPtr<IDispatch> HostList(const Vector& real, const wchar_t* name) {
  ForeignContainer list(real.Object());
  list.Name(name);
  list.On(L"Add", [real](Arguments& a) { real.Add(a.At(0)); });  // which answers nothing
  return list.New();
}

}  // namespace

class HostContainers::Factory final : public FakeComponent {
 public:
  using Make = ComPtr<IDispatch> (*)();
  Factory(const wchar_t* progId, Make make) : FakeComponent(progId), make_(make) {}
  ComPtr<IDispatch> New() override { return make_(); }

 private:
  Make make_;
};

HostContainers::HostContainers()
    : records_(std::make_unique<Factory>(
          L"Vexo.Dictionary",
          [] { return HostRecord(Dictionary(OwnContainer(__uuidof(::Dictionary))), L"new record"); })),
      lists_(std::make_unique<Factory>(
          L"Vexo.Vector", [] { return HostList(Vector(OwnContainer(__uuidof(::Vector))), L"new list"); })) {
  ForgetContainerFactories();
  hostContainers = true;
}

HostContainers::~HostContainers() {
  ForgetContainerFactories();
  hostContainers = false;
}

Dictionary Named(const wchar_t* name, Dictionary record) {
  if (hostContainers) FakeObject::Name(record.Object().Get(), name);
  return record;
}

Vector Named(const wchar_t* name, Vector list) {
  if (hostContainers) FakeObject::Name(list.Object().Get(), name);
  return list;
}

Dictionary Action(const wchar_t* name, const wchar_t* code, std::int32_t rightMask) {
  const auto message = Named(L"message", Record({{L"FTitle", L"标题"}}));
  const auto scenario = Named(L"scenario", Record({{L"FEnvironment", 1}, {L"Message", message}}));
  return Named(name, Record({{L"FCode", code},
                             {L"FID", 5},
                             {L"FStatus", 0},
                             {L"FClassTypeID", 7},
                             {L"FEnvironment", 3},
                             {L"FBillType", 1},
                             {L"FRightMask", rightMask},
                             {L"FIsPredefine", rightMask != 0},
                             {L"Messages", Named(L"messages", Record({{L"1", scenario}}))}}));
}

Dictionary Scenario(std::int32_t mask, std::int32_t id, std::int32_t billType) {
  return Named(L"scenario", Record({{L"FMask", mask}, {L"FID", id}, {L"FBillType", billType}}));
}

Dictionary Users(const wchar_t* name, std::initializer_list<std::int32_t> ids) {
  const auto users = Named(name, Record({}));
  for (const auto id : ids) users.Set(Key(id), Named(L"user", Record({{L"FUserID", id}})));
  return users;
}

class Platform::Stream final : public FakeComponent {
 public:
  Stream() : FakeComponent(L"ADODB.Stream", Place::kInFront) {}
  ComPtr<IDispatch> New() override;
};

namespace {

// Reached through its interface alone, whose members a breaker sees as assignments: they answer nothing.
class StreamObject final : public com::ComObject<StreamMembers> {
 public:
  STDMETHODIMP put_Type(LONG type) override {
    return Do(L"Type", [&] { EXPECT_EQ(type, 1) << "binary"; });
  }
  STDMETHODIMP Open(VARIANT, LONG, LONG, BSTR, BSTR) override {
    return Do(L"Open", [] {});
  }
  STDMETHODIMP Write(VARIANT bytes) override {
    return Do(L"Write", [&] { bytes_ = Value::CopyOf(bytes).ToBytes(); });
  }
  STDMETHODIMP SaveToFile(BSTR path, LONG option) override {
    return Do(L"SaveToFile", [&] {
      EXPECT_EQ(option, 2) << "in place of what is there";
      std::ofstream file(std::filesystem::path(path), std::ios::binary);
      file.write(reinterpret_cast<const char*>(bytes_.data()), static_cast<std::streamsize>(bytes_.size()));
    });
  }
  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }

 private:
  static HRESULT Do(const wchar_t* member, const std::function<void()>& real) noexcept try {
    DISPPARAMS none = {};
    Arguments arguments(none);
    const auto method = [&](Arguments&) { return real(), Value(); };
    auto* breaker = Breaker::Current();
    breaker ? breaker->Calls(L"ADODB.Stream", member, true, arguments, method) : method(arguments);
    return S_OK;
  } catch (const Error& error) {
    return error.Number();
  }

  std::vector<std::byte> bytes_;
};

}  // namespace

ComPtr<IDispatch> Platform::Stream::New() {
  ComPtr<IDispatch> object;
  *object.GetAddressOf() = new StreamObject;
  return object;
}

Platform::Platform() : stream_(std::make_unique<Stream>()) {
  AddBusiness();
  AddSending();
  AddMail();
}

Platform::~Platform() = default;

void Platform::AddBusiness() {
  auto& classInfo = Add(L"TavioMClass.ClassInfo");
  classInfo.On(L"GetBillActions", [] {
    return Named(L"loaded", Record({{L"Save", Action(L"loaded action", L"Save", 4)}}));
  });
  classInfo.On(L"getpredefineactions", [] {
    return Named(L"catalogue", List({Action(L"known action", L"Save", 4), Action(L"known action", L"Check", 8)}));
  });
  classInfo.On(L"GetBillEnvironments", [] { return Named(L"source", List({Scenario(1, 101), Scenario(3, 103)})); });
  classInfo.On(L"GetClassMenu", [] { return Named(L"menu", Record({{L"FName", L"菜单"}})); });
  classInfo.On(L"GetData", [this](Arguments& a) {
    const auto sql = a.At(1).ToText();
    if (sql.starts_with(L"select 1")) return Records({});
    const bool users = sql.starts_with(L"select FUserID");
    return Records({users ? Record({{L"FUserID", 11}}) : Record({{L"FMobilePhone", L"13800000001"}})});
  });
  Add(L"TavioMClass.ClassDefineUpdate").On(L"SaveBillActions", [] {});
  auto& catalogue = Add(L"TavioClassBillAction.PredefineActions");
  catalogue.On(L"SetList", [](Arguments& a) { EXPECT_EQ(Show(a.At(0)), "[3]") << "the host's"; });
  catalogue.On(L"GetList", [] { return Named(L"catalogue", List({Action(L"known action", L"Check", 8)})); });
  catalogue.On(L"LookupRightMask", [](Arguments& a) { return a.At(0).ToInt32() == 1; });
  catalogue.On(L"GetDefaultActions", [] {
    return Named(L"defaults", List({Action(L"default action", L"Save", 4), Action(L"default action", L"Check", 8)}));
  });
}

void Platform::AddSending() {
  Add(L"TavioAppCommand.Command").On(L"SendMessage", [] {});
  Add(L"Scripting.FileSystemObject", FakeComponent::Place::kInFront).On(L"GetFile", [this](Arguments& a) {
    const auto size = std::filesystem::file_size(std::filesystem::path(a.At(0).ToText()));
    file_.On(L"Size", [size] { return static_cast<std::int32_t>(size); });
    return file_.New();
  });
  file_.Name(L"Scripting.File");
  Add(L"TavioFormText.FormTextLoader").On(L"LoadFrmResStrings", [] { return Named(L"texts", List({})); });
  Add(L"TavioMBOSMultiCheck.BillInfo").On(L"GetUsers", [this] {
    return Records({Record({{L"FUserID", 1}, {L"FName", L"张伟"}})});
  });
  auto& users = Add(L"TavioMSmsManager.clsBillUseInfo");
  users.On(L"GetUserInfo", [] {
    return Named(L"known users", List({Named(L"known user", Record({{L"Email", L"a@x"}, {L"Mobile", L"1"}}))}));
  });
  users.On(L"UserInfoEx", [] { return L""; });
  users.On(L"GetIsUserNeedSend", [] {
    return Named(L"told", List({Named(L"told user", Record({{L"FUserID", 1}, {L"FIsNeedSend", true}}))}));
  });
  Add(L"MorlaMobileOpen.MobileOpen").On(L"SmsSendForBillCheck", [] {});
}

void Platform::AddMail() {
  auto& print = Add(L"TavioClassBillPrint.clsNotePrint");
  for (const auto* property : {L"dataSrv", L"TableInfo"}) print.OnAssign(property, [] {});
  print.On(L"CreatePDFFile", [](Arguments& a) {
    a.Return(0, Value(L"bill.pdf"));
    return true;
  });
  Add(L"MorlaMobileOpen.MorlaSendMail").On(L"MorlaSendMail", [] { return L""; });
  const auto section = [] { return Named(L"settings", Record({{L"txtMailSrv", L"x"}, {L"chkSmtp", true}})); };
  auto& client = Add(L"TavioClientBase.UserProfile");
  client.OnAssign(L"UserIndependent", [] {});
  client.On(L"Load", section);
  Add(L"TavioServerBase.UserProfile").On(L"LoadUserProfile", section);
  auto& jmail = Add(L"Jmail.Message");
  for (const auto* property :
       {L"Charset", L"ContentTransferEncoding", L"Encoding", L"ISOEncodeHeaders", L"Logging", L"MailServerUserName",
        L"MailServerPassWord", L"From", L"FromName", L"Subject", L"HTMLBody"}) {
    jmail.OnAssign(property, [] {});
  }
  for (const auto* method : {L"AddRecipient", L"AddAttachment"}) jmail.On(method, [] {});
  jmail.On(L"Send", [] { return true; });
}

}  // namespace tavio::test
