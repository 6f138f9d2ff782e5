#pragma once

#include "foundation/values/Value.h"

namespace tavio {

struct Mail {
  Text props;      // the shared properties of the sender
  Text addresses;  // joined by ";"
  Value subject;
  Text body;
  Text attachment;  // a path, or empty
};

// Sends a mail through the platform's mail gateway, or, if there is none, through the mail server that is set. Whether
// it was taken; a box tells what these two refuse. Raises Error if the gateway fails.
bool SendMail(const Mail& mail);

}  // namespace tavio
