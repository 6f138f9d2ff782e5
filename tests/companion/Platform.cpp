#include "tests/companion/Platform.h"

#include <filesystem>
#include <iostream>

#include "foundation/packages/RecordSet.h"

namespace tavio::test {
namespace {

constexpr std::int32_t kType = 1005, kBill = 5001;

Component ClassInfo() { return Component::Create(L"TavioMClass.ClassInfo"); }

}  // namespace

Text Props() {
  return Component::Create(L"TavioSharedProps.PropStore")
      .Call(L"GetProperty", std::int32_t{0}, L"PropsString")
      .ToText();
}

std::string RowsOf(const Text& sql) {
  std::string rows;
  const Component records(ClassInfo().Call(L"GetData", Props(), sql).ToObject());
  for (; !records.Read(L"EOF").ToBool(); records.Call(L"MoveNext")) {
    const Component fields(records.Read(L"Fields").ToObject());
    std::string row;
    for (std::int32_t i = 0; i < fields.Read(L"Count").ToInt32(); ++i) {
      Text cell;
      Component(fields.Call(L"Item", i).ToObject()).Read(L"Value").AppendTo(cell);
      row += (i ? " " : "") + Utf8(cell);
    }
    rows += (rows.empty() ? "" : "; ") + row;
  }
  return rows;
}

void Execute(const Text& sql) { ClassInfo().Call(L"GetData", Props(), sql); }

Component HostMessage() {
  const auto info = ClassInfo();
  const Text props = Props();
  const auto message = Component::Create(L"TavioClassBillAction.Message");
  message.Assign(L"ClassTypeID", Value(kType));
  message.Assign(L"ClassType", info.Call(L"GetClassType", props, kType));
  message.Assign(L"TableInfo", info.Call(L"GetTableInfo", props, kType));
  message.Call(L"RefreshVariableList");
  message.Call(L"NewMessage");
  const auto bill = info.Call(L"GetBillData", props, kType, kBill);
  message.Assign(L"Data", bill);
  message.Call(L"RefreshVariableValue", bill);
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
    const auto connected = tavio::Component::Create(L"TavioMClass.ClassInfo");
    connected.Call(L"getpredefineactions", tavio::test::Props());
    failed = RUN_ALL_TESTS();
  }
  CoUninitialize();
  std::cout << (failed ? "FAILED\n" : "finished\n");
  return failed;
}
