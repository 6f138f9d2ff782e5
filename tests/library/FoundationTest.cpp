#include "foundation/Counter.h"
#include "foundation/Operation.h"
#include "foundation/PendingError.h"
#include "foundation/ProcessState.h"
#include "foundation/ResText.h"
#include "foundation/SharedProperties.h"
#include "foundation/ShowMessage.h"
#include "foundation/modMorlaLogMsg.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using Entries = std::vector<std::string>;

class FoundationTest : public LibraryTest {
 protected:
  // From here on a translation is seen to be one.
  void TranslateInBrackets() {
    texts->On(L"LoadString", [](Arguments& a) {
      EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_BSTR);
      return Value(TextView(L"<" + a.At(0).ToText() + L">"));
    });
  }
};

TEST_F(FoundationTest, OperationReportsWhateverIsThrown) {
  const struct {
    const wchar_t* description;
    void (*fail)();
  } cases[] = {
      {L"断开", [] { throw Error(E_FAIL, L"Source", L"断开"); }},
      {L"溢出", [] { CountedIn16Bits(32768); }},
      {L"内存不足", [] { throw std::bad_alloc(); }},
      {L"自动化错误 0x80004005", [] { throw 7; }},
  };
  for (const auto& c : cases) {
    const auto failing = [&](Text& result) {
      result = L"half-built";
      c.fail();
    };
    EXPECT_EQ(Operation<Text>({.report = L"A : B "}, failing), Text());
    EXPECT_EQ(boxes.Take(), Boxes{Warning(Text(L"A : B \r\n") + c.description)});
  }
  EXPECT_EQ(log->entries, Entries{});
}

TEST_F(FoundationTest, OperationIsLoggedAsItsLabelsSay) {
  const struct {
    Labels labels;
    bool fails;
    std::int32_t result;
    Entries entries;
  } cases[] = {
      {{.log = L"A.B 保存"}, false, 5, {"begin A.B 保存", "end A.B 保存 1"}},
      {{.log = L"A.B"}, true, 0, {"begin A.B", "end A.B 0"}},
      {{.log = L"A.B", .resultAfterFailure = Labels::kKept}, true, 5, {"begin A.B", "end A.B 0"}},
      {{.log = L"A.B", .outcome = 0, .outcomeAfterFailure = 1}, false, 5, {"begin A.B", "end A.B 0"}},
      {{.log = L"A.B", .outcome = 0, .outcomeAfterFailure = 1}, true, 0, {"begin A.B", "end A.B 1"}},
      {{.log = L"A.B", .closesWithBegin = true}, true, 0, {"begin A.B", "begin A.B"}},
      {{}, true, 0, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    log->entries.clear();
    const auto result = Operation<std::int32_t>(c.labels, [&](std::int32_t& number) {
      number = 5;
      if (c.fails) throw Error::Overflow();
    });
    EXPECT_EQ(result, c.result);
    EXPECT_EQ(log->entries, c.entries);
  }
  Operation<bool>({.log = L"A.B"}, [](bool& done, std::int32_t& outcome) { outcome = done = true, outcome = 7; });
  EXPECT_EQ(log->entries.back(), "end A.B 7");
}

TEST_F(FoundationTest, ShowMessageTranslatesOnlyTheUsualTitle) {
  TranslateInBrackets();
  boxes.AnswerWith(IDNO);
  constexpr UINT kStyle = MB_YESNOCANCEL | MB_ICONERROR | MB_DEFBUTTON3;
  for (const auto& [given, shown] :
       {std::pair{L"Morla提示", L"<Morla提示>"}, {L"morla提示", L"morla提示"}, {L"", L""}}) {
    EXPECT_EQ(ShowMessage(L"a\r\nb", kStyle, given), IDNO);
    EXPECT_EQ(boxes.Take(), (Boxes{{L"a\r\nb", shown, kStyle}}));
  }
}

TEST_F(FoundationTest, TranslationKeepsTheBlanksAround) {
  TranslateInBrackets();
  for (const auto& [source, translation] :
       {std::pair{L"  用户 ", L"  <用户> "}, {L"用户 名", L"<用户 名>"}, {L"\t用户", L"<\t用户>"}}) {
    EXPECT_EQ(LoadResText(source), translation);
  }
  EXPECT_EQ(texts->Created(), 1);
  EXPECT_EQ(texts->fileName, L"TavioDesign");
  EXPECT_EQ(texts->language, L"CHS");
  props->props = L"Language=eng";
  LoadResText(L"a");
  EXPECT_EQ(texts->language, L"CHS") << "the language is read once";
}

TEST_F(FoundationTest, TranslationWithoutTextOrLoaderIsEmpty) {
  EXPECT_EQ(LoadResText(L"   "), L"");
  EXPECT_EQ(texts->Created(), 0);
  texts.reset();  // the failure to create it is not described by it
  EXPECT_EQ(LoadResText(L"  用户 "), L"   ");
  texts.emplace();
  texts->On(L"LoadString", Failing(L"断开"));
  EXPECT_EQ(LoadResText(L"用户"), L"");
}

TEST_F(FoundationTest, FormResourcesComeBackThroughTheReference) {
  FakeObject form;
  FakeComponent loader(L"TavioFormText.FormTextLoader");
  const auto made = Record({{L"Caption", L"用户"}});
  std::size_t given = 0;
  loader.On(L"LoadFrmResStrings", [&](Arguments& a) {
    given = a.Count();
    EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_DISPATCH);
    EXPECT_EQ(Show(a.At(1)) + Show(a.At(2)) + Show(a.At(3)), R"("CHS""""TavioDesign")");
    if (given == 5) a.Return(4, made.AsValue());
    return List({L"确定"}).AsValue();
  });
  const Component window(form.New());
  Dictionary none, some = Record({});
  EXPECT_EQ(Show(LoadFormResources(window, none)), R"(["确定"])");
  EXPECT_EQ(given, 4u);
  LoadFormResources(window, some);
  EXPECT_EQ(given, 5u);
  EXPECT_EQ(some.Object().Get(), made.Object().Get());
  EXPECT_FALSE(none);
  EXPECT_EQ(loader.Living(), 0);
}

TEST_F(FoundationTest, PropValueIsFoundWithoutRegardToLetterCase) {
  props->props = L"UILanguage=chs;Language=y;UserName=Ann";
  EXPECT_EQ(GetPropValue(L"Language"), L"CHS") << "the first whose name ends so";
  EXPECT_EQ(GetPropValue(L"username"), L"ANN");
  EXPECT_EQ(GetPropValue(L"UserID"), L"");
}

TEST_F(FoundationTest, SharePropertyIsReadTwiceAndTheStoreReleased) {
  FakeObject shared;
  props->On(L"GetProperty", [object = shared.New()](Arguments& a) {
    EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_I4);
    EXPECT_EQ(a.Raw(1).vt, VT_BYREF | VT_BSTR);
    return a.At(1).EqualsText(L"Profile") ? Value(object) : Value(std::int32_t{7});
  });
  EXPECT_TRUE(GetShareProperty(L"Profile").HoldsObject());
  EXPECT_EQ(props->Calls(L"GetProperty"), 2);
  EXPECT_EQ(Show(GetShareProperty(L"Other")), "7");
  EXPECT_EQ(props->Living(), 0);
}

TEST_F(FoundationTest, PropertiesThatCannotBeReadAreEmpty) {
  props->On(L"GetProperty", Failing(L"断开"));
  EXPECT_EQ(GetPropsString(), L"");
  props.reset();
  EXPECT_EQ(GetPropsString(), L"");
  EXPECT_EQ(GetPropValue(L"Language"), L"");
  EXPECT_TRUE(GetShareProperty(L"Profile").IsEmpty());
}

TEST_F(FoundationTest, OverridesComeBeforeTheStore) {
  FakeObject client;
  client.On(L"PropsString", [](Arguments&) { return Value(L"a=object"); });
  Process().propsOverrideObject.emplace(client.New());
  EXPECT_EQ(GetPropsString(), L"a=object");
  Process().propsOverride = L"a=text";
  EXPECT_EQ(GetPropsString(), L"a=text");
  EXPECT_EQ(props->Created(), 0);
}

TEST_F(FoundationTest, LogIsCreatedOnceAndLetGoWhereDisabled) {
  log->enabled = false;
  EXPECT_EQ(LogStart(L"A.B"), 0);
  EXPECT_EQ(log->Living(), 0);
  log->enabled = true;
  EXPECT_EQ(LogStart(L"A.B"), 0);
  LogEnd(1, 1);
  EXPECT_EQ(log->Created(), 1);
  EXPECT_EQ(log->entries, Entries{});
  Process() = {};
  log.reset();
  EXPECT_EQ(LogStart(L"A.B"), 0);
  log.emplace();
  EXPECT_EQ(LogStart(L"A.B"), 0);
  EXPECT_EQ(log->Created(), 0) << "one attempt, even where it failed";
}

TEST_F(FoundationTest, PendingErrorSurvivesLogAndTexts) {
  log->On(L"LogEnd", [](Arguments& a) {
    EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_I4);
    EXPECT_EQ(a.Raw(1).vt, VT_BYREF | VT_I4);
    SetErrorInfo(0, nullptr);
    return Value();
  });
  texts->On(L"LoadString", [](Arguments&) {
    SetErrorInfo(0, nullptr);
    return Value();
  });
  const auto handle = LogStart(L"A.B");
  ComPtr<ICreateErrorInfo> creation;
  ComPtr<IErrorInfo> pending, found;
  ASSERT_EQ(CreateErrorInfo(&creation), S_OK);
  ASSERT_EQ(creation.As(&pending), S_OK);
  SetErrorInfo(0, pending.Get());
  LogEnd(handle, 1);
  LoadResText(L"用户");
  EXPECT_EQ(log->Calls(L"LogEnd"), 1);
  EXPECT_EQ(texts->Calls(L"LoadString"), 1);
  ASSERT_EQ(GetErrorInfo(0, &found), S_OK);
  EXPECT_EQ(found.Get(), pending.Get());
}

}  // namespace
}  // namespace tavio::test
