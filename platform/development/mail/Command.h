#pragma once

#include "development/storage/PlatformObject.h"

namespace tavio::development {

// TavioAppCommand.Command: system messages, into t_Inbox, one row for each recipient.
//   SendMessage(connection string; content bytes and their length, title; recipients; sender; two flags; command)
// with exactly the types that clients of the platform pass: the bytes, the length, the recipients, the sender and the
// command by reference, the flags as 16-bit integers. The first `length` bytes are text in the system's code page.
class Command final : public PlatformObject {
 public:
  Command();

 private:
  void SendMessage(const Arguments& arguments);
};

}  // namespace tavio::development
