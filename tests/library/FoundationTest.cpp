#include "foundation/Counter.h"
#include "foundation/Operation.h"
#include "foundation/PendingError.h"
#include "foundation/ResText.h"
#include "foundation/SharedProperties.h"
#include "foundation/modMorlaLogMsg.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using Entries = std::vector<std::string>;

using FoundationTest = LibraryTest;

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

TEST_F(FoundationTest, TranslationKeepsTheBlanksAround) {
  texts->On(L"LoadString", [](Arguments& a) {
    EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_BSTR);
    return Value(TextView(L"<" + a.At(0).ToText() + L">"));
  });
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
  texts->On(L"LanguageID", Failing(L"断开"));
  EXPECT_EQ(LoadResText(L"a"), L"<a>") << "the loader refuses its language";
}

TEST_F(FoundationTest, PropValueIsFoundWithoutRegardToLetterCase) {
  props->props = L"UILanguage=chs;Language=y;UserName=Ann";
  EXPECT_EQ(GetPropValue(L"Language"), L"CHS") << "the first whose name ends so";
  EXPECT_EQ(GetPropValue(L"username"), L"ANN");
  EXPECT_EQ(GetPropValue(L"UserID"), L"");
}

TEST_F(FoundationTest, PropertiesThatCannotBeReadAreEmpty) {
  props->On(L"GetProperty", Failing(L"断开"));
  EXPECT_EQ(GetPropsString(), L"");
  props.reset();
  EXPECT_EQ(GetPropsString(), L"");
  EXPECT_EQ(GetPropValue(L"Language"), L"");
  EXPECT_TRUE(GetShareProperty(L"Profile").IsEmpty());
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
