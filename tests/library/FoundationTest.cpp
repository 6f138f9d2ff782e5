#include "foundation/Operation.h"
#include "foundation/ShowMessage.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using FoundationTest = LibraryTest;

TEST_F(FoundationTest, OperationReportsWhatWasThrown) {
  const auto result = Operation<std::int32_t>({.log = L"A.B 保存", .report = L"A : B"}, [](std::int32_t& number) {
    number = 5;
    throw Error::Overflow();
  });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(boxes.Take(), Boxes{Warning(L"A : B\r\n溢出")});
  EXPECT_EQ(log->entries, (std::vector<std::string>{"begin A.B 保存", "end A.B 保存 0"}));
}

}  // namespace
}  // namespace tavio::test
