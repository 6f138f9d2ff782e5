#include "development/business/PredefineTable.h"

#include "development/storage/Records.h"

namespace tavio::development {

Vector ReadPredefineActions(Database& database) {
  static constexpr Field kFields[] = {{L"FID"},         {L"FCode"},         {L"FName"},
                                      {L"FBillType"},   {L"FEnvironment"},  {L"FRightControl", true},
                                      {L"FRightMask"},  {L"FRightUseMask"}, {L"FRightGroupMask"},
                                      {L"FObjectType"}, {L"FObjectID"}};
  return ReadRecords(database, kFields, L"FROM t_PredefineAction ORDER BY FIndex");
}

}  // namespace tavio::development
