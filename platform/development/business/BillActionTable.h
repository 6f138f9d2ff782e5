#pragma once

#include <vector>

#include "development/storage/Database.h"
#include "development/storage/PackageJson.h"

namespace tavio::development {

// The actions of one business object as they are stored: one package each, in the order of the collection, with a
// version that every save raises. A collection carries the version it was read at in the key FVersion of each of its
// records, so that a save over somebody else's is refused instead of losing theirs.
class BillActionTable {
 public:
  BillActionTable(Database& database, std::int32_t classTypeId) : database_(database), classTypeId_(classTypeId) {}

  // The collection, keyed by FCode.
  Dictionary Load();

  // Stores the whole collection in one transaction: what is marked deleted (FStatus 4) is dropped, what has no FID gets
  // one, FStatus becomes 0. The rights masks of the actions are noted in t_ObjectAccessType. If deleting leaves no
  // action, the defaults of the bill type take their place. `classType` becomes known if its FID is not yet. The
  // packages themselves are not touched; raises Error, and stores nothing, for a collection that is not of the stored
  // version, an action without a code, or a code used twice.
  void Save(const Dictionary& actions, const Dictionary& classType);

 private:
  struct Plan;

  void RaiseVersion(std::int32_t from);
  void Replace(std::vector<Json>& actions);
  void NoteRights(const Json& action);
  void MakeKnown(const Json& classType);
  std::vector<Json> Defaults(std::int32_t billType);
  std::int32_t BillType(const Json& classType);

  Database& database_;
  std::int32_t classTypeId_;
};

}  // namespace tavio::development
