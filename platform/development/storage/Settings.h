#pragma once

#include "development/storage/Database.h"
#include "foundation/packages/Dictionary.h"

namespace tavio::development {

// The settings of the platform, in t_Setting. Raises Error for a name that is none, or a value that is none of it.
//   LogEnabled   "1" or "0", the value without a row
//   MailWay      "outbox", the value without a row: mails become files; "smtp": clients send for themselves, over SMTP;
//                "refuse": nobody sends
//   MailLogin    "loopback", the value without a row: a login is told to mail servers on this machine alone, since
//                nothing that is sent is encrypted; "anywhere"
Text SettingOf(Database& database, TextView name);
void CheckSetting(TextView name, TextView value);
void StoreSetting(Database& database, TextView name, TextView value);

inline constexpr std::int32_t kEverybody = 0;  // as the owner of user settings

// The user settings that `owner` has stored in a section under a name; empty if there are none.
Dictionary LoadProfile(Database& database, std::int32_t owner, const Text& section, const Text& name);

}  // namespace tavio::development
