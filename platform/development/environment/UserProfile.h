#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioClientBase.UserProfile: settings of the client, in t_UserProfile.
//   UserIndependent               whether Load and Save mean everybody's settings or, as at first, the current user's
//   Load(section, name)           the settings, a Dictionary; empty if there are none
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

}  // namespace tavio::development
