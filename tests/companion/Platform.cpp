#include "tests/companion/Platform.h"

#include <filesystem>
#include <iostream>

#include "companion/preview/Compose.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/RecordSet.h"

namespace tavio::test {

std::string Sql(const Text& statement) {
  std::string column;
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  const RecordSet rows(classInfo.Call(L"GetData", GetPropsString(), statement));
  for (; !rows.EndReached(); rows.MoveNext()) column += Show(rows.Field(L"F")) + " ";
  return column;
}

Component HostMessage() {
  auto message = companion::Compose(1005, L"Save", Value(1), 5001).message;
  message.Call(L"NewMessage");
  return message;
}

Dictionary PackageOf(const Component& message) { return Dictionary(message.Call(L"GetMessage")); }

Dictionary Users(std::initializer_list<int> ids) {
  const auto users = Dictionary::New();
  for (const int id : ids) users.Set(Key(std::int32_t{id}), Record({{L"FUserID", id}, {L"FMessageID", 0}}));
  return users;
}

std::string Raised(const std::function<void()>& body) try {
  body();
  return {};
} catch (const Error& error) {
  return Utf8(error.Description());
}

}  // namespace tavio::test

int main(int count, char** arguments) {
  ::testing::InitGoogleTest(&count, arguments);
  const auto folder = std::filesystem::absolute("CompanionTest.data");
  std::filesystem::remove_all(folder);
  SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", folder.c_str());
  CoInitialize(nullptr);
  int failed = 0;
  {
    // Who holds a component that has been at the database keeps its connection open for all.
    const tavio::companion::Templates connected;
    connected.ClassType(1005);
    failed = RUN_ALL_TESTS();
  }
  CoUninitialize();
  std::cout << (failed ? "FAILED\n" : "finished\n");
  return failed;
}
