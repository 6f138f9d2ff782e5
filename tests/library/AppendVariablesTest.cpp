#include <filesystem>
#include <fstream>

#include "actions/BillActions.h"
#include "foundation/AppFolder.h"
#include "tests/support/ForeignRecord.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

namespace fs = std::filesystem;

const std::byte kBytes[] = {std::byte{0}, std::byte{0x1A}, std::byte{'\n'}, std::byte{0xFF}};

std::string ContentOf(const Text& path) {
  std::ifstream file(fs::path(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}
const std::string kContent("\0\x1A\n\xFF", 4);

class AppendVariablesTest : public LibraryTest {
 protected:
  AppendVariablesTest() : folder_(fs::current_path()) {}
  ~AppendVariablesTest() override {
    fs::current_path(folder_);
    std::error_code ignored;
    fs::remove_all(fs::path(Temp()), ignored);
  }
  static Text Temp() { return GetAppFolder() + L"temp"; }

  BillActions actions;

 private:
  fs::path folder_;
};

TEST_F(AppendVariablesTest, EntriesReplaceThoseOfTheirKey) {
  const auto first = Record({{L"Items", Record({{L"a", 1}})}, {L"More", List({1, 2})}});
  ForeignRecord second(Record({{L"Items", List({})}, {L"None", Dictionary()}}));
  EXPECT_FALSE(actions.AddAppendVariables(first));
  const auto held = actions.GetAppendVariables();
  EXPECT_NE(held.Object().Get(), first.Object().Get());
  EXPECT_EQ(held.Get(L"Items"_key)->ToObject().Get(), first.Get(L"Items"_key)->ToObject().Get());
  EXPECT_FALSE(actions.AddAppendVariables(second.Handle()));
  EXPECT_FALSE(actions.AddAppendVariables(held)) << "into itself";
  EXPECT_EQ(actions.GetAppendVariables().Object().Get(), held.Object().Get());
  EXPECT_EQ(Show(held), "{Items: [], More: [1, 2], None: none}");
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.BillActions.AddAppendVariables 1");

  EXPECT_FALSE(actions.AddAppendVariables(Record({{L"New", Record({})}, {L"x", 5}})));
  EXPECT_EQ(boxes.Take(), Boxes{Warning(L"TavioClassBillAction.BillActions : AddAppendVariables\r\n类型不匹配")});
  EXPECT_EQ(Show(held), "{Items: [], More: [1, 2], None: none, New: {}}");
}

TEST_F(AppendVariablesTest, DownloadLeavesOneFileInTheFolder) {
  const auto bytes = Value::Bytes(kBytes);
  const auto first = actions.DownloadFile(bytes, L"Temp.tmp");
  EXPECT_EQ(first, Temp() + L"\\Temp.tmp");
  EXPECT_EQ(ContentOf(first), kContent);
  EXPECT_EQ(fs::current_path(), fs::path(Temp()));
  const auto second = actions.DownloadFile(bytes, L"附件.bin");
  EXPECT_EQ(ContentOf(second), kContent);
  EXPECT_FALSE(fs::exists(fs::path(first))) << "only the last download stays";
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.BillActions.DownloadFile 1");
  EXPECT_EQ(actions.DownloadFile(bytes, L"none\\a"), L"");
  EXPECT_EQ(actions.DownloadFile(Value(L"text"), L"a"), L"");
  EXPECT_EQ(log->entries.back(), "end TavioClassBillAction.BillActions.DownloadFile 0");
}

}  // namespace
}  // namespace tavio::test
