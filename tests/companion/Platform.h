#pragma once

#include <gtest/gtest.h>

#include "foundation/packages/Component.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Error.h"
#include "tests/support/Packages.h"

namespace tavio::test {

// The development platform as hosts reach it, and what tests change in it.

// The shared properties, which every component is given.
Text Props();

// The rows of a query as text, one row after the other: "16394 张伟; 16395 李娜".
std::string RowsOf(const Text& sql);
// Runs a statement that answers no rows.
void Execute(const Text& sql);

// A column of the table of users is gone for its time, so that whoever asks for it fails.
class WithoutUserColumn {
 public:
  explicit WithoutUserColumn(Text column) : column_(std::move(column)) { Rename(column_, column_ + L"X"); }
  ~WithoutUserColumn() { Rename(column_ + L"X", column_); }

 private:
  static void Rename(const Text& from, const Text& to) {
    Execute(L"alter table t_User rename column " + from + L" to " + to);
  }
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
