#include <gtest/gtest.h>

#include <filesystem>

#include "development/ClassDefineUpdate.h"
#include "development/ClassInfo.h"
#include "foundation/Error.h"
#include "tests/support/Packages.h"

namespace tavio::test {
namespace {

constexpr std::int32_t kClass = 1005;
constexpr wchar_t kProps[] = L"Language=CHS;";

template <class Object>
Component New() {
  return Component(development::MakeObject<Object>());
}

// The description of the failure; "" where there is none.
template <class Body>
std::string FailureOf(Body&& body) {
  try {
    body();
    return {};
  } catch (const Error& error) {
    return Utf8(error.Description());
  }
}

// Every test has a database of its own. No object of the platform outlives a statement, so that each call connects anew
// and reads what was really stored.
class DevPlatformStorageTest : public ::testing::Test {
 protected:
  DevPlatformStorageTest() {
    std::filesystem::remove_all(folder_);
    SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", folder_.c_str());
  }
  ~DevPlatformStorageTest() override {
    EXPECT_EQ(com::ModuleUse(), 0) << "an object of the platform is still alive";
    SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", nullptr);
    std::filesystem::remove_all(folder_);
  }

  static Dictionary Load(std::int32_t classType = kClass) {
    return Dictionary(New<development::ClassInfo>().Call(L"GetBillActions", kProps, classType));
  }
  static void Save(Dictionary& actions, std::int32_t classType = kClass, const Dictionary& type = {}) {
    Dictionary handed = type;
    New<development::ClassDefineUpdate>().Call(L"SaveBillActions", kProps, ByRef(classType), ByRef(actions),
                                               ByRef(handed));
  }
  static Component Query(const wchar_t* sql) {
    return Component(New<development::ClassInfo>().Call(L"GetData", kProps, sql).ToObject());
  }
  static Dictionary Action(const Dictionary& actions, const wchar_t* code) { return PackageAt(actions, Key(code)); }
  // Rows of one column, joined.
  static std::string Column(const wchar_t* sql) {
    std::string text;
    const auto rows = Query(sql);
    for (; !rows.Read(L"EOF").ToBool(); rows.Call(L"MoveNext")) {
      text += Show(Component(rows.Call(L"Fields", 0).ToObject()).Read(L"Value")) + " ";
    }
    return text;
  }

 private:
  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / (L"devplatform" + std::to_wstring(GetCurrentProcessId()));
};

TEST_F(DevPlatformStorageTest, SavedCollectionIsReadBack) {
  auto actions = Load();
  Action(actions, L"Save").Set(L"FName"_key, Value(L"存盘"));
  Action(actions, L"Save").Set(L"FStatus"_key, Value(2));
  auto expected = Action(actions, L"Save").Clone();
  expected.Set(L"FStatus"_key, Value(0));
  expected.Set(L"FVersion"_key, Value(2));
  Action(actions, L"Close").Set(L"FStatus"_key, Value(4));
  actions.Set(L"Export"_key, Record({{L"FID", 0},
                                     {L"FCode", L"Export"},
                                     {L"FCode_Old", L""},
                                     {L"FStatus", 1},
                                     {L"FRightMask", 512},
                                     {L"FObjectID", kClass}}));
  Save(actions);
  const auto stored = Load();
  EXPECT_EQ(Show(actions), Show(stored)) << "what comes back by reference is what is stored";
  EXPECT_FALSE(stored.Lookup(L"Close"_key));
  EXPECT_EQ(Show(Action(stored, L"Save")), Show(expected));
  EXPECT_EQ(
      Show(Action(stored, L"Export")),
      "{FID: 2001, FCode: \"Export\", FStatus: 0, FRightMask: 512, FObjectID: 1005, FClassTypeID: 1005, FVersion: 2}");
  const wchar_t* taken = L"select 1 from t_ObjectAccessType where fobjectid=1005 and (512 & faccessuse <> 0)";
  EXPECT_EQ(Column(taken), "1 ");
  Action(actions, L"Export").Set(L"FStatus"_key, Value(4));
  Save(actions);
  EXPECT_EQ(Column(taken), "") << "a dropped action's rights bit is free again";
}

TEST_F(DevPlatformStorageTest, RefusedSaveStoresNothing) {
  auto theirs = Load(), late = Load();
  Save(theirs);
  auto broken = Load();
  Action(broken, L"Close").Set(L"FID"_key, Value(1001));
  auto unread = Record({{L"New", Record({{L"FCode", L"New"}, {L"FStatus", 1}})}});
  const std::pair<Dictionary*, const char*> cases[] = {
      {&late, "其他用户"}, {&unread, "已有保存过的操作"}, {&broken, "数据库错误"}};
  for (const auto& [actions, told] : cases) {
    const auto before = Show(Load());
    const auto rights = Column(L"SELECT FAccessUse FROM t_ObjectAccessType");
    const auto failure = FailureOf([&] { Save(*actions); });
    EXPECT_NE(failure.find(told), std::string::npos) << failure;
    EXPECT_EQ(Show(Load()), before);
    EXPECT_EQ(Column(L"SELECT FAccessUse FROM t_ObjectAccessType"), rights);
  }
}

}  // namespace
}  // namespace tavio::test
