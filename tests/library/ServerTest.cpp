#include "tests/library/ServerFixture.h"
#include "tests/support/ForeignRecord.h"

namespace tavio::test {
namespace {

// Scripts find members by name, compiled hosts by the identifier and by the place that were current for them.
TEST_F(ServerTest, MembersKeepTheirIdentifiersAndOrder) {
  const std::pair<IID, std::string> interfaces[] = {
      {__uuidof(_BillActions),
       "1 ClassTypeID, 1 ClassTypeID, 2 ClassType, 3 ClassTypeEntry, 4 TableInfo, 5 vctPredefineAction, "
       "6 Initialize, 7 Save, 8 SetBillActions, 9 NewBill, 10 GetBillActions, 11 Item, 12 GetEnvironmentItems, "
       "13 LookUp, 14 AddNew, 15 Remove, 16 RemoveAll, 17 Update, 18 GetAppendVariables, 19 AddAppendVariables, "
       "20 GetMessage, 21 DownloadFile, "},
      {__uuidof(_PredefineActions), "1 Item, 2 SetList, 3 GetList, 4 LookUp, 5 GetDefaultActions, 6 LookupRightMask, "},
      {__uuidof(_BillEnvironments),
       "1 GetList, 2 GetSortList, 3 GetSortListMsg, 4 GetBillTypeList, 5 GetItem, 6 GetClassMenu, "},
      {__uuidof(_Message),
       "1 ClassTypeID, 1 ClassTypeID, 2 Data, 3 ClassType, 4 TableInfo, 5 ClassTypeEntry, 6 MustSelectMsgUser, "
       "6 MustSelectMsgUser, 7 GroupInfo, 8 ExcludeUser, 9 SetMessage, 10 GetMessage, 11 RefreshVariableList, "
       "12 AddVariable, 13 NewMessage, 14 RefreshVariableValue, 15 SendSMS, 16 SelectedUser, 16 SelectedUser, "
       "17 SendMessage, 18 AddUser, 19 RemoveUser, 20 RemoveAllUsers, 21 TransMessage, 22 GetVariableUser, "
       "23 GetVariableList, 24 SendEmail, 25 SendShortMessage, "},
  };
  for (const auto& [iid, expected] : interfaces) {
    std::string members;
    std::size_t place = 7;  // behind the methods of IDispatch
    ForEachMember(iid, [&](ITypeInfo* info, const FUNCDESC& function) {
      BString name;
      info->GetDocumentation(function.memid, name.Receive(), nullptr, nullptr, nullptr);
      members += std::to_string(function.memid) + " " + Utf8(name.View()) + ", ";
      EXPECT_EQ(function.callconv, CC_STDCALL);
      EXPECT_EQ(static_cast<std::size_t>(function.oVft), place++ * sizeof(void*));
    });
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
  Value word(L"x"), large(3e9), five(5), object(stranger.New());
  Value malformed = Record({{L"FID", L"x"}}).AsValue();
  const struct {
    IDispatch* object;
    Call call;
    HRESULT outcome;
    const wchar_t* description;
  } cases[] = {
      {actions.Get(), {L"ClassTypeID", {word.Raw()}, DISPATCH_PROPERTYPUT}, DISP_E_TYPEMISMATCH, L""},
      {actions.Get(), {L"ClassTypeID", {Variable(large)}, DISPATCH_PROPERTYPUT}, DISP_E_OVERFLOW, L""},
      {actions.Get(), {L"ClassType", {}, DISPATCH_PROPERTYGET}, DISP_E_MEMBERNOTFOUND, L""},
      {actions.Get(), {L"Initialize", {five.Raw()}}, DISP_E_BADPARAMCOUNT, L""},
      {actions.Get(), {L"AddNew", {Variable(five)}}, DISP_E_TYPEMISMATCH, L""},
      {actions.Get(), {L"AddNew", {Variable(object)}}, DISP_E_TYPEMISMATCH, L"类型不匹配"},
      {actions.Get(), {L"ClassType", {malformed.Raw()}, DISPATCH_PROPERTYPUTREF}, DISP_E_TYPEMISMATCH, L"类型不匹配"},
      {message.Get(), {L"GroupInfo", {five.Raw()}, DISPATCH_PROPERTYPUTREF}, DISP_E_TYPEMISMATCH, L"类型不匹配"},
  };
  for (auto& c : cases) {
    auto& call = const_cast<Call&>(c.call);
    EXPECT_EQ(call.On(c.object), c.outcome) << &c - cases;
    EXPECT_EQ(call.description, c.description) << &c - cases;
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
}

TEST_F(ServerTest, ObjectLetGoWhileItWorksEndsWhenItIsDone) {
  FakeComponent classInfo(L"TavioMClass.ClassInfo");
  auto* scenarios = Make<_BillEnvironments>(__uuidof(::BillEnvironments)).Detach();
  classInfo.On(L"GetBillEnvironments", [&](Arguments&) {
    EXPECT_NE(scenarios->Release(), 0u);
    return List({Record({{L"FMask", 1}})}).AsValue();
  });
  ComPtr<IDispatch> set;
  EXPECT_EQ(scenarios->GetList(0, 0, &set), S_OK);
  EXPECT_EQ(Show(Dictionary(set)), "{1: {FMask: 1, Parent: 0, Level: 0}}");
}

}  // namespace
}  // namespace tavio::test
