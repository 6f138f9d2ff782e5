#pragma once

#include <vector>

#include "companion/recorder/Recording.h"

namespace tavio::companion {

// The values of connection strings and passwords that occur in recorded calls. They are found by the names that they
// go by, and masked wherever they occur.
class Secrets {
 public:
  explicit Secrets(const std::deque<Call>& calls);

  // `text` with every secret as "***".
  Text Masked(TextView text) const;

 private:
  void Learn(const Snapshot& snapshot, TextView name);
  void LearnFrom(TextView text, TextView name);
  void Keep(TextView secret);

  std::vector<Text> values_;
};

}  // namespace tavio::companion
