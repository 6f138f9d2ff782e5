#include <filesystem>

#include "development/business/ClassDefineUpdate.h"
#include "development/business/ClassInfo.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/RecordSet.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using namespace development;

constexpr std::int32_t kClass = 1005;
constexpr wchar_t kProps[] = L"Language=CHS;";

// Every test has a database of its own. No object of the platform outlives a statement, so that each call connects anew
// and reads what was really stored.
class DevPlatformTest : public ::testing::Test {
 protected:
  DevPlatformTest() {
    std::filesystem::remove_all(folder_);
    SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", folder_.c_str());
  }
  ~DevPlatformTest() override {
    EXPECT_EQ(com::ModuleUse(), 0) << "an object of the platform is still alive";
    SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", nullptr);
    std::filesystem::remove_all(folder_);
  }

  static Dictionary Load() {
    return Dictionary(Component(MakeObject<ClassInfo>()).Call(L"GetBillActions", kProps, kClass));
  }
  static std::string Save(Dictionary& actions) {
    auto classType = kClass;
    Dictionary type;
    const Component update(MakeObject<ClassDefineUpdate>());
    return Outcome(
        [&] { return update.Call(L"SaveBillActions", kProps, ByRef(classType), ByRef(actions), ByRef(type)); });
  }
  // The rights masks that are taken for the business object.
  static std::string Rights() {
    const wchar_t sql[] = L"select FAccessUse from t_ObjectAccessType where fobjectid=1005 order by 1";
    std::string rights;
    const RecordSet rows(Component(MakeObject<ClassInfo>()).Call(L"GetData", kProps, sql));
    for (; !rows.EndReached(); rows.MoveNext()) rights += Show(rows.Field(L"FAccessUse")) + " ";
    return rights;
  }

 private:
  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / (L"devplatform" + std::to_wstring(GetCurrentProcessId()));
};

TEST_F(DevPlatformTest, SavedCollectionIsReadBack) {
  auto actions = Load();
  const auto save = PackageAt(actions, L"Save"_key);
  save.Set(L"FStatus"_key, Value(2));
  PackageAt(actions, L"Close"_key).Set(L"FStatus"_key, Value(4));
  actions.Set(
      L"Export"_key,
      Record({{L"FID", 0}, {L"FCode", L"Export"}, {L"FStatus", 1}, {L"FRightMask", 512}, {L"FObjectID", kClass}}));
  EXPECT_EQ(Save(actions), "empty");
  EXPECT_EQ(Show(actions), Show(Load())) << "what comes back by reference is what is stored";
  EXPECT_FALSE(actions.Lookup(L"Close"_key));
  save.Set(L"FStatus"_key, Value(0));
  save.Set(L"FVersion"_key, Value(2));
  EXPECT_EQ(Show(*actions.Get(L"Save"_key)), Show(save));
  EXPECT_EQ(Show(*actions.Get(L"Export"_key)),
            "{FID: 2001, FCode: \"Export\", FStatus: 0, FRightMask: 512, "
            "FObjectID: 1005, FClassTypeID: 1005, FVersion: 2}");
  EXPECT_NE(Rights().find("512 "), std::string::npos);
  PackageAt(actions, L"Export"_key).Set(L"FStatus"_key, Value(4));
  Save(actions);
  EXPECT_EQ(Rights().find("512 "), std::string::npos) << "a dropped action's rights bit is free again";
}

TEST_F(DevPlatformTest, RefusedSaveStoresNothing) {
  auto theirs = Load(), late = Load();
  Save(theirs);
  auto broken = Load();
  PackageAt(broken, L"Close"_key).Set(L"FID"_key, Value(1001));
  auto unread = Record({{L"New", Record({{L"FCode", L"New"}, {L"FStatus", 1}})}});
  for (const auto& [actions, told] :
       {std::pair{&late, "其他用户"}, {&unread, "已有保存过的操作"}, {&broken, "数据库错误"}}) {
    const auto before = Show(Load()) + Rights();
    EXPECT_NE(Save(*actions).find(told), std::string::npos) << told;
    EXPECT_EQ(Show(Load()) + Rights(), before);
  }
}

}  // namespace
}  // namespace tavio::test
