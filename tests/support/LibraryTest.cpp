#include "tests/support/LibraryTest.h"

#include <cstdio>

#include "foundation/environment/ProcessState.h"
#include "foundation/values/OwnModule.h"
#include "tests/support/LeakCheck.h"

namespace tavio::test {
FakeTexts::FakeTexts() : FakeComponent(L"TavioResLoader.Loader") {
  const auto property = [this](const wchar_t* name, Text& held) {
    On(
        name, [&held] { return held; }, [&held](Arguments& a) { held = a.At(0).ToText(); });
  };
  property(L"ResFileBaseName", fileName);
  property(L"LanguageID", language);
  On(L"LoadString", [](Arguments& a) {
    EXPECT_EQ(a.Raw(0).vt, VT_BYREF | VT_BSTR);
    return Localised(a.At(0).ToText());
  });
}

FakeLog::FakeLog() : FakeComponent(L"MorlaLogMsg.Log") {
  On(L"IsEnabled", [] { return true; });
  On(L"LogStart", [this](Arguments& a) {
    labels_.push_back(Utf8(a.At(0).ToText()));
    entries.push_back("begin " + labels_.back());
    return static_cast<std::int32_t>(labels_.size());
  });
  On(L"LogEnd", [this](Arguments& a) {
    for (const std::size_t i : {0, 1}) EXPECT_EQ(a.Raw(i).vt, VT_BYREF | VT_I4);
    entries.push_back("end " + labels_.at(static_cast<std::size_t>(a.At(0).ToInt32()) - 1) + " " + Show(a.At(1)));
  });
}

FakeProps::FakeProps() : FakeComponent(L"TavioSharedProps.PropStore") {
  On(L"GetProperty", [this](Arguments& a) {
    EXPECT_EQ(a.At(0).ToInt32(), static_cast<std::int32_t>(GetCurrentProcessId()));
    return a.At(1).EqualsText(L"PropsString") ? Value(TextView(props)) : Value();
  });
}

FakeRecords::FakeRecords(Vector records) : records_(std::move(records)) {
  Name(L"ADODB.Recordset");
  fields_.Name(L"ADODB.Fields");
  field_.Name(L"ADODB.Field");
  On(L"EOF", [this] { return position_ > records_.Count(); });
  On(L"MoveNext", [this] { ++position_; });
  On(L"Fields", [this] { return fields_.New(); });
  fields_.On(L"Item", [this](Arguments& a) {
    const auto record = records_.Record(position_);
    const Key name(a.At(0).ToText());
    if (!record.Lookup(name)) throw Error(E_INVALIDARG, L"Records", Text(name.View()));
    current_ = record.Get(name)->Copy();
    return field_.New();
  });
  field_.On(L"Value", [this] { return current_.Copy(); });
}

std::vector<std::filesystem::path> MessageFiles() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(GetAppFolder()))) {
    if (entry.path().extension() == L".tmp") files.push_back(entry.path());
  }
  return files;
}

std::size_t RemoveMessageFiles() {
  std::size_t removed = 0;
  for (const auto& file : MessageFiles()) removed += std::filesystem::remove(file);
  return removed;
}

LibraryTest::LibraryTest() { Process() = {}; }

LibraryTest::~LibraryTest() {
  Process() = {};
  texts.reset();
  log.reset();
  props.reset();
  EXPECT_EQ(boxes.Take(), Boxes{});
}

}  // namespace tavio::test

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  tavio::test::FailTestsThatLeak();
  const int failed = RUN_ALL_TESTS();
  CoUninitialize();
  const bool anyRan = ::testing::UnitTest::GetInstance()->test_to_run_count() > 0;
  if (!failed && anyRan) std::puts("finished");
  return failed;
}
