#include <fstream>
#include <map>

#include "tests/library/ServerFixture.h"

namespace tavio::test {
namespace {

using Members = std::vector<std::string>;

// A property that is read and assigned is one member.
Members InTypeLibrary(REFIID iid) {
  Members members;
  ForEachMember(iid, [&](ITypeInfo* info, const FUNCDESC& function) {
    BString name;
    info->GetDocumentation(function.memid, name.Receive(), nullptr, nullptr, nullptr);
    const auto member = Utf8(name.View());
    if (members.empty() || members.back() != member) members.push_back(member);
  });
  return members;
}

// The first cells of the table under the heading of each class.
std::map<std::string, Members> InDocument() {
  std::map<std::string, Members> classes;
  std::ifstream document(TAVIO_INTERFACES_DOC);
  std::string heading;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("## ")) heading = line.substr(3);
    if (line.starts_with("| `")) classes[heading].push_back(line.substr(3, line.find('`', 3) - 3));
  }
  return classes;
}

TEST(InterfacesDocTest, ListsEveryMemberInOrder) {
  const std::map<std::string, Members> expected = {{"BillActions", InTypeLibrary(__uuidof(_BillActions))},
                                                   {"PredefineActions", InTypeLibrary(__uuidof(_PredefineActions))},
                                                   {"BillEnvironments", InTypeLibrary(__uuidof(_BillEnvironments))},
                                                   {"Message", InTypeLibrary(__uuidof(_Message))}};
  EXPECT_EQ(InDocument(), expected);
}

}  // namespace
}  // namespace tavio::test
