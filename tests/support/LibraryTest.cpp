#include "tests/support/LibraryTest.h"

#include <cstdio>

#include "foundation/AppFolder.h"
#include "foundation/ProcessState.h"

namespace tavio::test {
namespace {

bool NoContainerIsAlive() {
  const HMODULE containers = GetModuleHandleW((GetAppFolder() + L"Vexo10.dll").c_str());
  if (!containers) return true;  // none was ever made
  using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();
  const auto canUnloadNow =
      reinterpret_cast<CanUnloadNow>(reinterpret_cast<void*>(GetProcAddress(containers, "DllCanUnloadNow")));
  return canUnloadNow && canUnloadNow() == S_OK;
}

}  // namespace

FakeTexts::FakeTexts() : FakeComponent(L"TavioResLoader.Loader") {
  const auto property = [this](const wchar_t* name, Text& stored) {
    On(
        name, [&stored](Arguments&) { return Value(TextView(stored)); },
        [&stored](Arguments& a) {
          stored = a.At(0).ToText();
          return Value();
        });
  };
  property(L"ResFileBaseName", fileName);
  property(L"LanguageID", language);
  On(L"LoadString", [](Arguments& a) { return a.At(0); });
}

FakeLog::FakeLog() : FakeComponent(L"MorlaLogMsg.Log") {
  On(L"IsEnabled", [](Arguments&) { return Value(true); });
  On(L"LogStart", [this](Arguments& a) {
    labels_.push_back(a.At(0).ToText());
    entries.push_back("begin " + Utf8(labels_.back()));
    return Value(static_cast<std::int32_t>(labels_.size()));
  });
  On(L"LogEnd", [this](Arguments& a) {
    const auto& label = labels_.at(static_cast<std::size_t>(a.At(0).ToInt32()) - 1);
    entries.push_back("end " + Utf8(label) + " " + Show(a.At(1)));
    return Value();
  });
}

FakeProps::FakeProps() : FakeComponent(L"TavioSharedProps.PropStore") {
  On(L"GetProperty", [this](Arguments& a) {
    EXPECT_EQ(a.At(0).ToInt32(), static_cast<std::int32_t>(GetCurrentProcessId()));
    return a.At(1).EqualsText(L"PropsString") ? Value(TextView(props)) : Value();
  });
}

LibraryTest::LibraryTest() { Process() = {}; }

LibraryTest::~LibraryTest() {
  Process() = {};
  texts.reset();
  log.reset();
  props.reset();
  EXPECT_EQ(boxes.Take(), Boxes{});
  EXPECT_EQ(LivingFakes(), 0);
  EXPECT_TRUE(NoContainerIsAlive());
}

}  // namespace tavio::test

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const int failed = RUN_ALL_TESTS();
  CoUninitialize();
  const bool anyRan = ::testing::UnitTest::GetInstance()->test_to_run_count() > 0;
  if (!failed && anyRan) std::puts("finished");
  return failed;
}
