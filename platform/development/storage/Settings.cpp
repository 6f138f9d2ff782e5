#include "development/storage/Settings.h"

#include "development/storage/PackageJson.h"

namespace tavio::development {

Dictionary LoadProfile(Database& database, std::int32_t owner, const Text& section, const Text& name) {
  const Value package = database.FirstCell(
      L"SELECT FPackage FROM t_UserProfile WHERE FUserID = ? AND FSection = ? AND FName = ?", owner, section, name);
  return package.IsEmpty() ? Dictionary::New() : Dictionary(FromJson(FromColumn(package)));
}

}  // namespace tavio::development
