#pragma once

#include <map>
#include <set>

#include "delivery/AddressList.h"
#include "foundation/packages/Dictionary.h"

namespace tavio::companion {

// What the platform's tables say about users. They are read at most once each, some hundred at a time.
class Users {
 public:
  struct User {
    Text name;
    bool forbidden = false;
    Text number;
  };

  void Ask(const std::set<std::int32_t>& ids);
  // Whether the tables could be read at all; if not, nobody is found.
  bool AreKnown() const noexcept { return known_; }
  const User* Find(std::int32_t id) const;

 private:
  void AskSome(const Text& ids);

  bool known_ = true;
  std::set<std::int32_t> asked_;
  std::map<std::int32_t, User> users_;
};

// An entry of a recipient list.
struct Listed {
  Text key;
  Text type = L"U";
  std::int32_t id = 0;
  bool isNumber = true;  // whether its ID can be read
};

// The entries of a list of the message package; `typed` if entries may name a type and an ID of their own. Empty
// if there is no list.
std::vector<Listed> ListedIn(const Dictionary& list, bool typed);

// Joins addresses as the library does, and tells of what a dropped one is a part.
class Joining {
 public:
  explicit Joining(Char separator) : list_(separator), separator_(separator) {}

  // Empty if the address was taken.
  std::vector<Text> Add(const Text& address);
  const Text& Joined() const noexcept { return list_.Joined(); }

 private:
  AddressList list_;
  Char separator_;
  Text upper_;
};

}  // namespace tavio::companion
