#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <vector>

#include "foundation/packages/Fields.h"
#include "foundation/values/Error.h"
#include "tests/support/BoxWatcher.h"
#include "tests/support/FakeComponent.h"
#include "tests/support/Packages.h"

namespace tavio::test {

using Strings = std::vector<std::string>;

// TavioResLoader.Loader: a text's translation is the text in «».
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
  // Between operations alone, whose ends it would not know.
  void Forget() { entries.clear(), labels_.clear(); }
  Strings entries;

 private:
  Strings labels_;
};

// TavioSharedProps.PropStore: answers `props` for PropsString.
class FakeProps : public FakeComponent {
 public:
  FakeProps();
  Text props = L"Language=chs;UserID=16394;UserName=Ann;";
};

// A record set of a platform component: a Vector of records, read by EOF, MoveNext, Fields, Item and Value. A field
// that the current record lacks is an error, as it is there.
class FakeRecords : public FakeObject {
 public:
  explicit FakeRecords(Vector records);

 private:
  Vector records_;
  std::int32_t position_ = 1;
  FakeObject fields_;
  FakeObject field_;
  Value current_;
};

// The report of a failed operation, as in Report(L"Message : AddUser", L"断开") and, of a failure of the library's own,
// Report(L"Message : AddUser", L"«类型不匹配»").
inline Box Report(const Text& label, const Text& description) {
  return {L"TavioClassBillAction." + label + L"\r\n" + description, Localised(L"Morla提示"), MB_OK | MB_ICONWARNING};
}

// What `body` answers, or the description of what it raises.
template <class Body>
std::string Outcome(Body&& body) try {
  return Show(Item(body()).value);
} catch (const Error& error) {
  return Utf8(error.Description());
}

// The files of messages that lie beside the program, and how many of them there were to remove.
std::vector<std::filesystem::path> MessageFiles();
std::size_t RemoveMessageFiles();

// A test of the library with what every operation touches: texts, log, shared properties (reset one to take it away)
// and message boxes. When it ends, every box must have been taken.
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
