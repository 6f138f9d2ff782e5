#include <map>

#include "tests/library/ServerFixture.h"
#include "tests/support/ForeignRecord.h"

namespace tavio::test {
namespace {

// "id Name(parameters)": ":=" behind the name of an assignment, "&=" of one by reference; l long, s text, b Boolean,
// o object, v any; & by reference, ? optional.
std::string Describe(ITypeInfo* info, const FUNCDESC& function) {
  const std::map<VARTYPE, char> letters = {{VT_I4, 'l'}, {VT_BSTR, 's'}, {VT_BOOL, 'b'}, {VT_VARIANT, 'v'}};
  BString name;
  info->GetDocumentation(function.memid, name.Receive(), nullptr, nullptr, nullptr);
  auto text = std::to_string(function.memid) + " " + Utf8(name.View());
  if (function.invkind == INVOKE_PROPERTYPUT) text += ":=";
  if (function.invkind == INVOKE_PROPERTYPUTREF) text += "&=";
  text += "(";
  for (SHORT i = 0; i < function.cParams; ++i) {
    const auto& element = function.lprgelemdescParam[i];
    const auto flags = element.paramdesc.wParamFlags;
    if (flags & PARAMFLAG_FRETVAL) continue;
    const TYPEDESC* plain = &element.tdesc;
    int pointers = 0;
    for (; plain->vt == VT_PTR; plain = plain->lptdesc) ++pointers;
    const auto letter = letters.find(plain->vt);
    const bool object = letter == letters.end();
    text += object ? 'o' : letter->second;
    if (pointers > (object && plain->vt != VT_DISPATCH)) text += "&";
    if (flags & PARAMFLAG_FOPT) text += "?";
  }
  return text + ")";
}

TEST_F(ServerTest, MembersKeepTheirIdentifiersAndOrder) {
  const std::pair<IID, std::vector<std::string>> interfaces[] = {
      {__uuidof(_BillActions),
       {"1 ClassTypeID:=(l)",
        "1 ClassTypeID()",
        "2 ClassType&=(o)",
        "3 ClassTypeEntry:=(o)",
        "4 TableInfo:=(o)",
        "5 vctPredefineAction:=(o)",
        "6 Initialize()",
        "7 Save()",
        "8 SetBillActions(o&)",
        "9 NewBill()",
        "10 GetBillActions()",
        "11 Item(s)",
        "12 GetEnvironmentItems(l)",
        "13 LookUp(s)",
        "14 AddNew(o&)",
        "15 Remove(s&)",
        "16 RemoveAll()",
        "17 Update(o&)",
        "18 GetAppendVariables()",
        "19 AddAppendVariables(o)",
        "20 GetMessage(sl)",
        "21 DownloadFile(vs?)"}},
      {__uuidof(_PredefineActions),
       {"1 Item(s)", "2 SetList(o&)", "3 GetList()", "4 LookUp(s)", "5 GetDefaultActions(l)", "6 LookupRightMask(l)"}},
      {__uuidof(_BillEnvironments),
       {"1 GetList(l?l?)", "2 GetSortList(l?l?)", "3 GetSortListMsg(l?l?)", "4 GetBillTypeList(l)", "5 GetItem(l?l?)",
        "6 GetClassMenu()"}},
      {__uuidof(_Message),
       {"1 ClassTypeID:=(l)",
        "1 ClassTypeID()",
        "2 Data&=(o)",
        "3 ClassType&=(o)",
        "4 TableInfo&=(o)",
        "5 ClassTypeEntry&=(o)",
        "6 MustSelectMsgUser:=(b)",
        "6 MustSelectMsgUser()",
        "7 GroupInfo&=(v)",
        "8 ExcludeUser&=(o)",
        "9 SetMessage(o)",
        "10 GetMessage()",
        "11 RefreshVariableList()",
        "12 AddVariable(o)",
        "13 NewMessage()",
        "14 RefreshVariableValue(o&)",
        "15 SendSMS()",
        "16 SelectedUser()",
        "16 SelectedUser&=(o)",
        "17 SendMessage(o?)",
        "18 AddUser(l&)",
        "19 RemoveUser(l&)",
        "20 RemoveAllUsers()",
        "21 TransMessage(sb&?b&?b&?)",
        "22 GetVariableUser()",
        "23 GetVariableList()",
        "24 SendEmail(o)",
        "25 SendShortMessage()"}},
  };
  for (const auto& [iid, expected] : interfaces) {
    std::vector<std::string> members;
    ForEachMember(iid, [&](ITypeInfo* info, const FUNCDESC& function) { members.push_back(Describe(info, function)); });
    EXPECT_EQ(members, expected);
  }
}

TEST_F(ServerTest, VariablesTakeWhatAReferenceLeaves) {
  const auto message = Make(__uuidof(::Message));
  const Value text(L"[a]");
  Value caption(std::int16_t{1}), value(L"True"), name;
  Call call{L"TransMessage", {text.Raw(), Variable(caption), Variable(value), Variable(name)}};
  EXPECT_EQ(call.On(message.Get()), S_OK);
  EXPECT_EQ(Show(List({call.result, caption, value, name})), R"(["[a]", true, false, false])");

  const auto actions = Make(__uuidof(::BillActions));
  const auto given = Record({{L"a", Record({{L"FCode", L"Save"}, {L"FClassTypeID", 7}})}});
  Value package = given.AsValue(), code(L"Save");
  EXPECT_EQ((Call{L"SetBillActions", {Variable(package)}}.On(actions.Get())), S_OK);
  EXPECT_EQ(package.ToObject().Get(), given.Object().Get());
  Call look{L"lookup", {Variable(code)}, DISPATCH_METHOD | DISPATCH_PROPERTYGET};
  EXPECT_EQ(look.On(actions.Get()), S_OK);
  Call held{L"GetBillActions"}, id{L"ClassTypeID", {}, DISPATCH_PROPERTYGET};
  EXPECT_EQ(held.On(actions.Get()), S_OK);
  EXPECT_EQ(id.On(actions.Get()), S_OK);
  EXPECT_EQ(Show(List({look.result, id.result})), "[true, 7]");
  EXPECT_EQ(held.result.ToObject().Get(), given.Object().Get());
}

TEST_F(ServerTest, ArgumentsAreGivenByNameOrLeftOut) {
  const auto message = Make(__uuidof(::Message));
  const Value text(L"[a]"), yes(true), missing = Value::Missing();
  Value variable(true);
  const struct {
    std::vector<VARIANT> arguments;
    std::vector<const wchar_t*> names;
    HRESULT outcome;
  } cases[] = {
      {{text.Raw(), yes.Raw()}, {}, S_OK},
      {{text.Raw(), missing.Raw(), yes.Raw()}, {}, S_OK},
      {{text.Raw(), yes.Raw()}, {L"transname"}, S_OK},
      {{Variable(variable), text.Raw()}, {L"TransValue", L"strMessage"}, S_OK},
      {{text.Raw(), yes.Raw()}, {L"strMessage"}, DISP_E_PARAMNOTFOUND},  // given twice
      {{yes.Raw()}, {L"TransName"}, DISP_E_PARAMNOTOPTIONAL},
      {{text.Raw(), yes.Raw()}, {L"Translate"}, DISP_E_UNKNOWNNAME},
      {{text.Raw(), yes.Raw(), yes.Raw(), yes.Raw(), yes.Raw()}, {}, DISP_E_BADPARAMCOUNT},
      {{}, {}, DISP_E_PARAMNOTOPTIONAL},
  };
  for (const auto& c : cases) {
    Call call{L"TransMessage", c.arguments, DISPATCH_METHOD, c.names};
    EXPECT_EQ(call.On(message.Get()), c.outcome) << &c - cases;
    EXPECT_EQ(Show(call.result), c.outcome == S_OK ? R"("[a]")" : "empty") << &c - cases;
  }
  Call send{L"SendMessage"}, none{L"TransMessage", {text.Raw()}};
  EXPECT_EQ(send.On(message.Get()), S_OK);
  EXPECT_EQ(none.On(message.Get()), S_OK);
  EXPECT_EQ(boxes.Take(), Boxes{Warning(L"TavioClassBillAction.Message : TransMessage\r\n未指定需要进行何种翻译!")});
}

TEST_F(ServerTest, WrongArgumentsAreRefusedCleanly) {
  FakeObject stranger;
  const auto message = Make(__uuidof(::Message)), actions = Make(__uuidof(::BillActions));
  Value word(L"x"), large(3e9), five(5), nothing, object(stranger.New()), list = List({}).AsValue();
  Value malformed = Record({{L"FID", L"x"}}).AsValue();
  const struct {
    IDispatch* object;
    Call call;
    HRESULT outcome;
    const wchar_t* description;
  } cases[] = {
      {actions.Get(), {L"ClassTypeID", {word.Raw()}, DISPATCH_PROPERTYPUT}, DISP_E_TYPEMISMATCH, L""},
      {actions.Get(), {L"ClassTypeID", {Variable(large)}, DISPATCH_PROPERTYPUT}, DISP_E_OVERFLOW, L""},
      {actions.Get(), {L"ClassTypeID", {}, DISPATCH_PROPERTYPUT}, DISP_E_BADPARAMCOUNT, L""},
      {actions.Get(), {L"ClassType", {}, DISPATCH_PROPERTYGET}, DISP_E_MEMBERNOTFOUND, L""},
      {actions.Get(), {L"Initialize", {five.Raw()}}, DISP_E_BADPARAMCOUNT, L""},
      {actions.Get(), {L"GetEnvironmentItems", {word.Raw()}}, DISP_E_TYPEMISMATCH, L""},
      {actions.Get(), {L"AddNew", {Variable(five)}}, DISP_E_TYPEMISMATCH, L""},
      {actions.Get(), {L"AddNew", {five.Raw()}}, DISP_E_TYPEMISMATCH, L""},
      {actions.Get(), {L"AddNew", {Variable(object)}}, DISP_E_TYPEMISMATCH, L"类型不匹配"},
      {actions.Get(), {L"TableInfo", {list.Raw()}, DISPATCH_PROPERTYPUT}, DISP_E_TYPEMISMATCH, L"类型不匹配"},
      {actions.Get(), {L"ClassType", {malformed.Raw()}, DISPATCH_PROPERTYPUTREF}, DISP_E_TYPEMISMATCH, L"类型不匹配"},
      {message.Get(), {L"GroupInfo", {five.Raw()}, DISPATCH_PROPERTYPUTREF}, DISP_E_TYPEMISMATCH, L"类型不匹配"},
      {message.Get(), {L"GroupInfo", {Variable(nothing)}, DISPATCH_PROPERTYPUT}, DISP_E_TYPEMISMATCH, L"类型不匹配"},
      {message.Get(), {L"AddUser", {Variable(word)}}, DISP_E_TYPEMISMATCH, L""},
      {message.Get(), {L"SetMessage", {five.Raw()}}, DISP_E_TYPEMISMATCH, L""},
  };
  for (auto& c : cases) {
    auto& call = const_cast<Call&>(c.call);
    EXPECT_EQ(call.On(c.object), c.outcome) << &c - cases;
    EXPECT_EQ(call.description, c.description) << &c - cases;
  }
  // The members of IUnknown and IDispatch are no members for hosts, nor are unknown identifiers.
  DISPPARAMS none = {};
  for (const DISPID id : {-1, 0, 99, 0x60000000, 0x60000001, 0x60000002, 0x60010003}) {
    EXPECT_EQ(message->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND)
        << id;
  }
}

TEST_F(ServerTest, BothKindsOfAssignmentReachAProperty) {
  const auto message = Make(__uuidof(::Message));
  const auto record = Record({});
  Value package = record.AsValue(), none{ComPtr<IDispatch>()};
  for (const WORD kind : std::initializer_list<WORD>{4, 8, 12}) {
    for (const auto& argument : {package.Raw(), Variable(package), none.Raw()}) {
      EXPECT_EQ((Call{L"SelectedUser", {argument}, kind}.On(message.Get())), S_OK) << kind;
      Call read{L"SelectedUser", {}, DISPATCH_PROPERTYGET};
      EXPECT_EQ(read.On(message.Get()), S_OK);
      EXPECT_EQ(read.result.ToObject().Get(), argument.vt == VT_DISPATCH ? argument.pdispVal : record.Object().Get());
    }
    EXPECT_EQ((Call{L"GroupInfo", {package.Raw()}, kind}.On(message.Get())), S_OK);
    EXPECT_EQ((Call{L"TableInfo", {package.Raw()}, kind}.On(Make(__uuidof(::BillActions)).Get())), S_OK);
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
  BString source, description;
  error->GetSource(source.Receive());
  error->GetDescription(description.Receive());
  EXPECT_EQ(source.View(), L"Host");
  EXPECT_EQ(description.View(), L"断开");

  BSTR text = nullptr;
  EXPECT_EQ(message->TransMessage(nullptr, nullptr, nullptr, nullptr, &text), S_OK);
  EXPECT_EQ(boxes.Take().size(), 1u);
  SysFreeString(text);
  EXPECT_EQ(message->GetMessage(nullptr), E_POINTER);
  EXPECT_EQ(actions->SetBillActions(nullptr), E_POINTER);
  EXPECT_EQ(actions->put_TableInfo(nullptr), S_OK);
}

TEST_F(ServerTest, ServerStaysLoadedWhileItIsUsed) {
  const auto unload = From<CanUnloadNow>(ServerFolder() + L"TavioClassBillAction.dll", "DllCanUnloadNow");
  const auto get = From<GetClassObject>(ServerFolder() + L"TavioClassBillAction.dll", "DllGetClassObject");
  EXPECT_EQ(unload(), S_OK);
  auto factory = Factory(__uuidof(::BillActions));
  EXPECT_EQ(unload(), S_FALSE);
  void* object = &object;
  EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, &object), E_NOINTERFACE);
  EXPECT_EQ(get(IID_IStream, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(factory->LockServer(TRUE), S_OK);
  auto* locked = factory.Get();
  locked->AddRef();
  factory.Reset();
  locked->LockServer(FALSE);
  EXPECT_EQ(unload(), S_FALSE);
  locked->Release();
  auto made = Make(__uuidof(::BillActions));
  EXPECT_EQ(unload(), S_FALSE);
}

}  // namespace
}  // namespace tavio::test
