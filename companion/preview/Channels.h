#pragma once

#include "companion/preview/People.h"
#include "companion/preview/Result.h"

namespace tavio::companion {

// One sending operation as it ran in a dry run.
struct Sending {
  bool answered = false;
  std::vector<const Call*> calls;
  std::vector<Text> boxes;
};

// A bill field that holds a user.
struct FieldUser {
  Text field;  // its caption
  std::int32_t user = 0;
};

struct ChannelInput {
  const Dictionary& message;  // the package
  const Secrets& secrets;
  Users& users;
  const std::vector<FieldUser>& fields;    // of the bill, if it is known
  const std::vector<Text>& fieldCaptions;  // all that could hold users
};

Channel SystemMessageOf(const Sending& sending, const ChannelInput& input);
Channel MailOf(const Sending& sending, const ChannelInput& input);
Channel ShortMessageOf(const Sending& sending, const ChannelInput& input);
Channel ApprovalOf(const Sending& sending, const ChannelInput& input);

const Call* FindCall(const Sending& sending, const wchar_t* progId, const wchar_t* member);

}  // namespace tavio::companion
