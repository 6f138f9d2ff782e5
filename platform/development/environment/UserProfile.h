#pragma once

#include "development/PlatformObject.h"

namespace tavio::development {

// TavioClientBase.UserProfile: settings of the client, in t_UserProfile.
//   UserIndependent               whether Load and Save mean everybody's settings or, as at first, the current user's
//   Load(section, name)           the settings, a Dictionary; empty where there are none
//   Save(section, name, package)  replaces them
class ClientProfile final : public PlatformObject {
 public:
  ClientProfile();

 private:
  std::int32_t Owner();

  bool userIndependent_ = false;
};

// TavioServerBase.UserProfile: the same settings, reached on the server's side.
//   LoadUserProfile(properties, section, name, user independent)
class ServerProfile final : public PlatformObject {
 public:
  ServerProfile();
};

// Everybody's settings of a section.
Dictionary CommonProfile(Database& database, const Text& section, const Text& name);

}  // namespace tavio::development
