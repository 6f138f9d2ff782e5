#include <TavioClassBillAction.h>
#include <Vexo.h>

#include <filesystem>
#include <functional>
#include <map>

#include "com/server/ErrorInformation.h"
#include "foundation/values/OwnModule.h"
#include "tests/support/Foreign.h"
#include "tests/support/LibraryTest.h"
#include "tests/support/Passed.h"
#include "tests/support/Server.h"

namespace tavio::test {
namespace {

const Text& ServerFile() {
  static const Text file =
      std::filesystem::path(GetAppFolder() + L"..\\bin\\TavioClassBillAction.dll").lexically_normal().wstring();
  return file;
}

// One late-bound call, as a host makes it.
struct Call {
  const wchar_t* member;
  std::vector<VARIANT> arguments = {};  // in source order, borrowed
  WORD flags = DISPATCH_METHOD;
  std::vector<const wchar_t*> names = {};  // of the last arguments

  Value result = Value();
  Text description = Text();

  HRESULT On(IDispatch* object) {
    std::vector<LPOLESTR> all = {const_cast<LPOLESTR>(member)};
    for (const auto* name : names) all.push_back(const_cast<LPOLESTR>(name));
    std::vector<DISPID> ids(all.size());
    const HRESULT found = object->GetIDsOfNames(IID_NULL, all.data(), static_cast<UINT>(all.size()), 0, ids.data());
    if (FAILED(found)) return found;
    std::vector<DISPID> named(ids.rbegin(), ids.rend() - 1);
    const bool assigns = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (assigns) named.assign(1, DISPID_PROPERTYPUT);
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters = {reversed.data(), named.data(), static_cast<UINT>(reversed.size()),
                             static_cast<UINT>(named.size())};
    EXCEPINFO info = {};
    const HRESULT outcome = object->Invoke(ids[0], IID_NULL, 0, flags, &parameters, result.Receive(), &info, nullptr);
    if (outcome != DISP_E_EXCEPTION) return outcome;
    const Error error = Error::FromInvoke(outcome, info);
    description = error.Description();
    return error.Number();
  }
};

// An object that stands for its only property, as hosts have them.
class Standing : public LateBound {
 public:
  explicit Standing(std::function<Value()> read) {
    Add(L"Value", [read = std::move(read)](Arguments&) { return read(); });
    Default(L"Value");
  }
  static Value New(std::function<Value()> read) {
    Value made{ComPtr<IDispatch>()};
    made.InPlace()->pdispVal = new Standing(std::move(read));
    return made;
  }
};

// The built server, unregistered. It keeps the texts component for good, so that is made before the first test.
class ServerTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    texts = new FakeTexts;
    const auto message = Make(__uuidof(::Message));
    const BoxWatcher boxes;
    Call{L"NewMessage"}.On(message.Get());
  }
  static void TearDownTestSuite() { delete texts; }
  ~ServerTest() override { EXPECT_EQ(boxes.Take(), Boxes{}); }

  template <class Interface = IDispatch>
  static ComPtr<Interface> Make(const CLSID& id) {
    return test::Make<Interface>(LoadLibraryW(ServerFile().c_str()), id);
  }

  static inline FakeTexts* texts = nullptr;
  BoxWatcher boxes;
};

// The type of a parameter, with "&" if it is by reference, and what it is if it is left out.
std::string ShowParameter(const Parameter& parameter) {
  static const std::map<VARTYPE, std::string> names = {
      {VT_I4, "long"}, {VT_BSTR, "text"}, {VT_BOOL, "flag"}, {VT_DISPATCH, "object"}, {VT_VARIANT, "any"}};
  return names.at(parameter.type) + (parameter.byReference ? "&" : "") +
         (parameter.otherwise.empty() ? "" : "=" + parameter.otherwise);
}

// "1 ClassTypeID=(long)": what it is called by, how it is assigned if it is, what it takes.
std::string ShowMember(const Member& member) {
  const char* assigned = member.kind == INVOKE_PROPERTYPUT ? "=" : member.kind == INVOKE_PROPERTYPUTREF ? ":=" : "";
  std::string parameters;
  for (const auto& parameter : member.parameters) {
    if (!parameter.isResult) parameters += (parameters.empty() ? "" : ", ") + ShowParameter(parameter);
  }
  const bool oldest = member.description == "必须先设置";
  return std::to_string(member.id) + " " + member.name + assigned + "(" + parameters + ")" +
         (oldest ? member.description : "");
}

// Scripts find members by name, compiled hosts by the identifiers, the place and the parameters that were current for
// them. What the descriptions say stands beside them in the documents; these here are the oldest ones.
TEST_F(ServerTest, ClassesKeepWhatHostsAreBoundTo) {
  const auto known = [](unsigned char last) {
    return GUID{0x2b7c9f10, 0x4e6d, 0x4b0a, {0x9c, 0x43, 0x7d, 0x5f, 0x1e, 0x8a, 0x60, last}};
  };
  const struct {
    CLSID id;
    IID interfaceId;
    std::string members;
  } classes[] = {
      {known(0x21), known(0x11),
       "1 ClassTypeID=(long); 1 ClassTypeID(); 2 ClassType:=(object); 3 ClassTypeEntry=(object); "
       "4 TableInfo=(object); 5 vctPredefineAction=(object); 6 Initialize(); 7 Save(); "
       "8 SetBillActions(object&); 9 NewBill(); 10 GetBillActions(); 11 Item(text); "
       "12 GetEnvironmentItems(long); 13 LookUp(text); 14 AddNew(object&); 15 Remove(text&); "
       "16 RemoveAll(); 17 Update(object&); 18 GetAppendVariables(); 19 AddAppendVariables(object); "
       "20 GetMessage(text, long); 21 DownloadFile(any, text=\"Temp.tmp\"); "},
      {known(0x22), known(0x12),
       "1 Item(text); 2 SetList(object&); 3 GetList(); 4 LookUp(text); 5 GetDefaultActions(long); "
       "6 LookupRightMask(long); "},
      {known(0x23), known(0x13),
       "1 GetList(long=0, long=0); 2 GetSortList(long=0, long=0); 3 GetSortListMsg(long=0, long=0); "
       "4 GetBillTypeList(long); 5 GetItem(long=0, long=0); 6 GetClassMenu(); "},
      {known(0x24), known(0x14),
       "1 ClassTypeID=(long)必须先设置; 1 ClassTypeID()必须先设置; 2 Data:=(object); "
       "3 ClassType:=(object)必须先设置; 4 TableInfo:=(object)必须先设置; "
       "5 ClassTypeEntry:=(object)必须先设置; 6 MustSelectMsgUser=(flag); 6 MustSelectMsgUser(); "
       "7 GroupInfo:=(any); 8 ExcludeUser:=(object); 9 SetMessage(object); 10 GetMessage(); "
       "11 RefreshVariableList(); 12 AddVariable(object); 13 NewMessage(); "
       "14 RefreshVariableValue(object&); 15 SendSMS(); 16 SelectedUser(); 16 SelectedUser:=(object); "
       "17 SendMessage(object=none); 18 AddUser(long&); 19 RemoveUser(long&); 20 RemoveAllUsers(); "
       "21 TransMessage(text, flag&=false, flag&=false, flag&=false); 22 GetVariableUser(); "
       "23 GetVariableList(); 24 SendEmail(object); 25 SendShortMessage(); "},
  };
  for (const auto& c : classes) {
    std::string members;
    ULONG_PTR place = 7 * sizeof(void*);  // behind the members of IDispatch
    for (const auto& member : MembersOf(ServerFile(), c.interfaceId)) {
      EXPECT_EQ(std::exchange(place, place + sizeof(void*)), member.place) << member.name;
      EXPECT_FALSE(member.description.empty()) << member.name;
      members += ShowMember(member) + "; ";
    }
    EXPECT_EQ(members, c.members);
    ComPtr<IUnknown> object;
    EXPECT_EQ(Make(c.id)->QueryInterface(c.interfaceId, reinterpret_cast<void**>(object.GetAddressOf())), S_OK);
  }
}

// TransMessage(strMessage, [TransCaption], [TransValue], [TransName]): one flag is to be true, or a box asks for it.
TEST_F(ServerTest, ArgumentsAreGivenByNameOrLeftOut) {
  const auto message = Make(__uuidof(::Message));
  const Value text(L"[a]"), yes(true), missing = Value::Missing(), list = List({3}).AsValue();
  Value variable(true);
  const struct {
    const char* name;
    std::vector<VARIANT> arguments;
    std::vector<const wchar_t*> names;
    HRESULT outcome;
  } cases[] = {
      {"the last two not passed", {text.Raw(), yes.Raw()}, {}, S_OK},
      {"one passed as left out", {text.Raw(), missing.Raw(), yes.Raw()}, {}, S_OK},
      {"one by name", {text.Raw(), yes.Raw()}, {L"transname"}, S_OK},
      {"all by name, in any order", {Variable(variable), text.Raw()}, {L"TransValue", L"strMessage"}, S_OK},
      {"one by place and by name", {text.Raw(), yes.Raw()}, {L"strMessage"}, DISP_E_PARAMNOTFOUND},
      {"a needed one left out", {yes.Raw()}, {L"TransName"}, DISP_E_PARAMNOTOPTIONAL},
      {"none at all", {}, {}, DISP_E_PARAMNOTOPTIONAL},
      {"a name that there is not", {text.Raw(), yes.Raw()}, {L"Translate"}, DISP_E_UNKNOWNNAME},
      {"too many", {text.Raw(), yes.Raw(), yes.Raw(), yes.Raw(), yes.Raw()}, {}, DISP_E_BADPARAMCOUNT},
  };
  for (const auto& c : cases) {
    Call call{L"TransMessage", c.arguments, DISPATCH_METHOD, c.names};
    EXPECT_EQ(call.On(message.Get()), c.outcome) << c.name;
    EXPECT_EQ(Show(call.result), c.outcome == S_OK ? R"("[a]")" : "empty") << c.name;
  }
  EXPECT_EQ(Call{L"SendMessage"}.On(message.Get()), S_OK) << "a package left out";
  const auto catalogue = Make(__uuidof(::PredefineActions));
  Call set{L"SetList", {list.Raw()}}, get{L"GetList"};
  set.On(catalogue.Get());
  get.On(catalogue.Get());
  EXPECT_EQ(Show(set.result) + Show(get.result), "true[3]");
  EXPECT_EQ((Call{L"TransMessage", {text.Raw()}}.On(message.Get())), S_OK) << "all flags left out";
  EXPECT_EQ(boxes.Take(), Boxes{Report(L"Message : TransMessage", L"«未指定需要进行何种翻译!»")});
}

// Script hosts read a member to see what it is ("typeof ba.RemoveAll"), and call a property ("m.ClassTypeID()").
TEST_F(ServerTest, ReadRunsNoMethod) {
  constexpr WORD kCall = DISPATCH_METHOD, kRead = DISPATCH_PROPERTYGET;
  const auto message = Make(__uuidof(::Message));
  const struct {
    const char* name;
    const wchar_t* member;
    WORD flags;
    HRESULT outcome;
  } cases[] = {
      {"method read", L"GetVariableList", kRead, DISP_E_MEMBERNOTFOUND},
      {"method called or read", L"GetVariableList", kCall | kRead, S_OK},
      {"property read", L"ClassTypeID", kRead, S_OK},
      {"property called", L"ClassTypeID", kCall, S_OK},
      {"property that is only set", L"Data", kCall | kRead, DISP_E_MEMBERNOTFOUND},
      {"method set", L"GetVariableList", DISPATCH_PROPERTYPUT, DISP_E_MEMBERNOTFOUND},
  };
  for (const auto& c : cases) {
    EXPECT_EQ((Call{c.member, {}, c.flags}.On(message.Get())), c.outcome) << c.name;
  }
}

// Two true flags are settled: that for values becomes false. Only a variable that changes is written.
TEST_F(ServerTest, VariablesAreConvertedInAndBack) {
  const auto message = Make(__uuidof(::Message));
  const Value text(L"[a]"), yes(true);
  const struct {
    Item flag;
    const char* changed;
  } cases[] = {{true, "false"}, {Short(1), "0s"}, {1, "0"}, {1.0, "0"}, {L"1", "\"False\""}};
  for (const auto& c : cases) {
    const auto before = Show(c.flag.value);
    Value typed[] = {c.flag.value.Copy(), c.flag.value.Copy()}, held[] = {c.flag.value.Copy(), c.flag.value.Copy()};
    EXPECT_EQ((Call{L"TransMessage", {text.Raw(), Typed(typed[0]), Typed(typed[1])}}.On(message.Get())), S_OK);
    EXPECT_EQ((Call{L"TransMessage", {text.Raw(), Variable(held[0]), Variable(held[1])}}.On(message.Get())), S_OK);
    EXPECT_EQ(Show(typed[0]), before);
    EXPECT_EQ(Show(typed[1]), c.changed);
    EXPECT_EQ(Show(held[0]), before);
    EXPECT_EQ(Show(held[1]), "false") << before << ": a variable of any type takes the flag's own";
  }
  std::int16_t shorts[] = {1, 7};
  std::uint8_t bytes[] = {1, 7};
  for (const auto& flag : {Reference(VT_I2, shorts), Reference(VT_UI1, bytes)}) {
    EXPECT_EQ((Call{L"TransMessage", {text.Raw(), yes.Raw(), flag}}.On(message.Get())), S_OK);
  }
  EXPECT_TRUE(shorts[0] == 0 && shorts[1] == 7 && bytes[0] == 0 && bytes[1] == 7) << "each in its own size";
  Value user = Short(5), code(5);
  EXPECT_EQ((Call{L"AddUser", {Typed(user)}}.On(message.Get())), S_OK);
  EXPECT_EQ((Call{L"Remove", {Variable(code)}}.On(Make(__uuidof(::BillActions)).Get())), S_OK);
  EXPECT_EQ(Show(code), "5") << "and not its text";
  EXPECT_EQ(boxes.Take().size(), 2u) << "of an unbound message, which has been reached";
}

// Reading an argument can run the host's code, which changes its other variables and lets go of its objects.
TEST_F(ServerTest, HostsCodeMayRunWhileArgumentsAreRead) {
  auto* message = Make(__uuidof(::Message)).Detach();
  Value text(L"[a]"), yes(true);
  Value flag = Standing::New([&] {
    text = Value(L"[b]");
    const Value reused[] = {Value(L"[c]"), Value(L"[d]")};
    EXPECT_NE(message->Release(), 0u);
    return Value(true);
  });
  Call call{L"TransMessage", {Variable(text), yes.Raw(), Variable(flag)}};
  EXPECT_EQ(call.On(message), S_OK);
  EXPECT_EQ(Show(call.result), R"("[a]")");
  EXPECT_EQ(Show(flag), "false");
}

// As some hosts pass what their caller left out.
TEST_F(ServerTest, ReferenceToNothingCountsAsLeftOut) {
  const auto message = Make(__uuidof(::Message));
  const Value text(L"[a]"), yes(true);
  for (const VARTYPE type : {VT_VARIANT, VT_BOOL, VT_I2, VT_BSTR}) {
    const VARIANT nowhere = Reference(type, nullptr);
    Call flag{L"TransMessage", {text.Raw(), nowhere, yes.Raw()}}, user{L"AddUser", {nowhere}};
    EXPECT_EQ(flag.On(message.Get()), S_OK) << type;
    EXPECT_EQ(Show(flag.result), R"("[a]")") << type;
    EXPECT_EQ(user.On(message.Get()), DISP_E_PARAMNOTOPTIONAL) << type;
  }
}

TEST_F(ServerTest, WrongArgumentsAreRefusedCleanly) {
  constexpr auto kGet = DISPATCH_PROPERTYGET, kLet = DISPATCH_PROPERTYPUT, kSet = DISPATCH_PROPERTYPUTREF;
  const Value word(L"x"), five(5), nothing{ComPtr<IDispatch>()}, stranger(FakeObject().New()),
      malformed = Record({{L"FID", L"x"}}).AsValue();
  Value large(3e9), number(5), object(FakeObject().New());
  constexpr HRESULT kMismatch = DISP_E_TYPEMISMATCH;
  const wchar_t* const words = L"«类型不匹配»";  // of the member, which was reached
  const CLSID& actions = __uuidof(::BillActions);
  const struct {
    const char* name;
    const CLSID& on;
    Call call;
    HRESULT outcome;
    const wchar_t* description = L"";
  } cases[] = {
      {"text for a number", actions, {L"ClassTypeID", {word.Raw()}, kLet}, kMismatch},
      {"no object for a number", __uuidof(::BillEnvironments), {L"GetList", {nothing.Raw()}}, kMismatch},
      {"variable beyond 32 bits", actions, {L"ClassTypeID", {Variable(large)}, kLet}, DISP_E_OVERFLOW},
      {"read of what is only set", actions, {L"ClassType", {}, kGet}, DISP_E_MEMBERNOTFOUND},
      {"number for a package", actions, {L"AddNew", {Variable(number)}}, kMismatch},
      {"stranger for a package", actions, {L"AddNew", {Variable(object)}}, kMismatch, words},
      {"stranger for the fields", actions, {L"TableInfo", {stranger.Raw()}, kLet}, kMismatch, words},
      {"stranger for a list", actions, {L"ClassTypeEntry", {stranger.Raw()}, kLet}, kMismatch, words},
      {"template whose FID is a word", actions, {L"ClassType", {malformed.Raw()}, kSet}, kMismatch, words},
      {"no object at all", __uuidof(::Message), {L"GroupInfo", {Value().Raw()}, kSet}, kMismatch, words},
  };
  for (const auto& c : cases) {
    Call call = {c.call.member, c.call.arguments, c.call.flags};
    EXPECT_EQ(call.On(Make(c.on).Get()), c.outcome) << c.name;
    EXPECT_EQ(call.description, c.description) << c.name;
  }
}

TEST_F(ServerTest, EarlyBoundCallersGetErrorInformation) {
  const auto message = Make<_Message>(__uuidof(::Message));
  ComPtr<ISupportErrorInfo> support;
  ComPtr<IErrorInfo> error;
  ASSERT_EQ(message.As(&support), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_Message)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IDispatch), S_FALSE);
  ForeignRecord failing(Record({{L"FID", 1}}));
  failing.On(L"Lookup", [](Arguments&) -> Value { throw Error(5, L"Host", L"断开"); });
  const auto actions = Make<_BillActions>(__uuidof(::BillActions));
  EXPECT_TRUE(FAILED(actions->putref_ClassType(failing.Handle().Object().Get()))) << "a small number is a failure too";
  ASSERT_EQ(GetErrorInfo(0, &error), S_OK);
  BString description;
  error->GetDescription(description.Receive());
  EXPECT_EQ(description.View(), L"断开");
  EXPECT_EQ(actions->DownloadFile(Reference(VT_UI1, nullptr), nullptr, description.Receive()), S_OK) << "silently";

  BSTR text = nullptr;
  EXPECT_EQ(message->TransMessage(nullptr, nullptr, nullptr, nullptr, &text), S_OK);
  EXPECT_EQ(boxes.Take().size(), 1u);
  SysFreeString(text);
  EXPECT_EQ(message->GetMessage(nullptr), E_POINTER);
}

// The description of a failure is the failing member's own: a list's position that is not there has one, nothing else.
TEST_F(ServerTest, ContainersDescribeTheirOwnFailuresOnly) {
  const auto record = Dictionary::New();
  const auto list = Vector::New();
  ComPtr<_Dictionary> early;
  ASSERT_EQ(record.Object().As(&early), S_OK);
  VARIANT unknownType = {};
  unknownType.vt = 0x7f;
  const auto& broken = Value::In(unknownType);
  const struct {
    const char* name;
    std::function<void()> fails;
    const char* description;
  } cases[] = {
      {"stored value", [&] { record.Set(L"a"_key, broken); }, "自动化错误 0x80020008"},
      {"stored item", [&] { list.Add(broken); }, "自动化错误 0x80020008"},
      {"item", [&] { list.Item(1); }, "下标越界"},
      {"a reference to nothing for what is absent",
       [&] {
         Value answer;
         const HRESULT outcome = early->GetValue(Key(L"a").Get(), Reference(VT_I4, nullptr), answer.Receive());
         throw Error::FromObject(early.Get(), __uuidof(_Dictionary), outcome);
       },
       "类型不匹配"},
      {"no place for an answer",
       [&] { throw Error::FromObject(early.Get(), __uuidof(_Dictionary), early->get_Count(nullptr)); }, "对象未设置"},
  };
  for (const auto& c : cases) {
    com::Raise(IID_NULL, E_FAIL, L"Host", L"断开");
    EXPECT_EQ(Outcome([&] {
                c.fails();
                return Value();
              }),
              c.description)
        << c.name;
  }
}

}  // namespace
}  // namespace tavio::test
