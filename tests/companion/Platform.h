#pragma once

#include <gtest/gtest.h>

#include "foundation/packages/Component.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Error.h"
#include "tests/support/Packages.h"

namespace tavio::test {

// The development platform as hosts reach it, and what tests change in it.

// Runs a statement; what it answers in its column F, one after the other.
std::string Sql(const Text& statement);

// A column of the table of users is gone for its time, so that whoever asks for it fails.
class WithoutUserColumn {
 public:
  explicit WithoutUserColumn(Text column) : column_(std::move(column)) { Sql(kRename + column_ + L" to FGone"); }
  ~WithoutUserColumn() { Sql(kRename + L"FGone to " + column_); }

 private:
  const Text kRename = L"alter table t_User rename column ";
  Text column_;
};

// A message object with template, bill 5001 and a new message package; a host's own.
Component HostMessage();
Dictionary PackageOf(const Component& message);

// A list of recipients by user ID.
Dictionary Users(std::initializer_list<int> ids);

// What `body` raises, or "" where it raises nothing.
std::string Raised(const std::function<void()>& body);

}  // namespace tavio::test
