#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioDevPlatform.Data: what the development platform holds, for whoever looks after it.
//   Describe() -> Dictionary   FDatabase, the name of the database; FVersion, that of its tables; Tables, a Dictionary
//                              of the number of rows in each that Export writes
//   Export() -> text           all data as JSON (PlatformData.h); what was sent and logged is not in it. Passwords of
//                              mail settings are
//   Import(text)               replaces the tables that the text names, all or nothing
//   Reset(database)            brings everything back to the seed, what was sent and logged included; `database` must be
//                              the name that Describe answers
//   Setting(name) -> text   SetSetting(name, value)   the settings of the platform (Settings.h)
class Data final : public PlatformObject {
 public:
  Data();

 private:
  Value Describe();
  void Reset(const Text& database);
};

}  // namespace tavio::development
