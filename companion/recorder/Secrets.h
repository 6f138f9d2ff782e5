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
  friend Text WithoutSecrets(TextView text);

  struct Secret {
    Text text;
    Text instead;
  };

  Secrets() = default;
  void Learn(const Snapshot& snapshot, TextView name);
  void LearnFrom(TextView text, TextView name);
  // `pair`: "name=value" as it stood in a text; empty if it did not.
  void Keep(TextView secret, TextView pair);
  void Keep(Secret secret);
  void Sort();

  std::vector<Secret> secrets_;
};

// What a box says, whose secrets nobody has seen in a call: without those that go by a name in it, and without those of
// the shared properties.
Text WithoutSecrets(TextView text);

}  // namespace tavio::companion
