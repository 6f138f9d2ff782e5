#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "tests/support/BoxWatcher.h"
#include "tests/support/FakeComponent.h"
#include "tests/support/Packages.h"

namespace tavio::test {

// TavioResLoader.Loader: every text's translation is the text itself.
class FakeTexts : public FakeComponent {
 public:
  FakeTexts();
  // What was assigned last.
  Text fileName;
  Text language;
};

// MorlaLogMsg.Log: the entries as "begin LABEL" and "end LABEL OUTCOME".
class FakeLog : public FakeComponent {
 public:
  FakeLog();
  std::vector<std::string> entries;

 private:
  std::vector<Text> labels_;
};

// TavioSharedProps.PropStore: answers `props` for PropsString.
class FakeProps : public FakeComponent {
 public:
  FakeProps();
  Text props = L"Language=chs;UserID=16394;UserName=Ann;";
};

// A test of the library with what every operation touches: texts, log, shared properties (reset one to take it away)
// and message boxes. When it ends, every box must have been taken, and no container and no fake may be alive.
class LibraryTest : public ::testing::Test {
 protected:
  LibraryTest();
  ~LibraryTest() override;

  std::optional<FakeTexts> texts{std::in_place};
  std::optional<FakeLog> log{std::in_place};
  std::optional<FakeProps> props{std::in_place};
  BoxWatcher boxes;
};

}  // namespace tavio::test
