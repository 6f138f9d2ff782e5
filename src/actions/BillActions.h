#pragma once

#include <optional>

#include "foundation/packages/Component.h"
#include "foundation/values/Error.h"
#include "foundation/values/NoWindowsMacros.h"

namespace tavio {

// The actions of one business object, keyed by action code. Packages are held by reference: a change made through
// either side is seen by both. Every operation traps its own failures, shows them in a box if its comment does not
// say otherwise, and answers its empty result. Actions marked deleted stay in the collection until the middle tier
// drops them on Save, and queries find them like any other.
class BillActions {
 public:
  // The class type ID of the business object; 0 while it is not bound.
  void ClassTypeID(std::int32_t value) noexcept { classTypeId_ = value; }
  std::int32_t ClassTypeID() const noexcept { return classTypeId_; }
  // The template of the business object. Its FID, if it has one, becomes the class type ID; raises Error if that
  // is no 32-bit number.
  void ClassType(Dictionary value);
  void ClassTypeEntry(Vector value) noexcept { classTypeEntry_ = std::move(value); }
  void TableInfo(Dictionary value) noexcept { tableInfo_ = std::move(value); }
  void vctPredefineAction(Vector value) noexcept { predefineActions_ = std::move(value); }

  // Loads the collection of the bound object from the middle tier.
  void Initialize() noexcept;
  // Assigns rights masks, writes the collection to the middle tier and loads it again.
  bool Save() noexcept;
  // Replaces the collection, and takes the class type ID of its first action.
  void SetBillActions(const Dictionary& actions) noexcept;
  // Replaces the collection by the default actions of the bill type (FBillTypeID of the template), without messages.
  void NewBill() noexcept;
  // The collection itself; unset when none is held.
  const Dictionary& GetBillActions() const noexcept { return actions_; }

  // A copy of the action with that code (letter case counts); unset when there is none.
  Dictionary Item(TextView code) const noexcept;
  // Copies of the actions whose FEnvironment shares a bit with `mask`; unset when no collection is held.
  Dictionary GetEnvironmentItems(std::int32_t mask) const noexcept;
  bool LookUp(TextView code) const noexcept;
  // The message package of an action in a scenario: of those whose mask shares a bit with `mask`, the one with the
  // greatest. Unset when there is none.
  Dictionary GetMessage(TextView code, std::int32_t mask) const noexcept;

  // Adds a copy of the action, or updates the one stored under its FCode_Old, else its FCode. Messages of a stored
  // action are never changed.
  bool AddNew(const Dictionary& action) noexcept;
  // Replaces the stored action of that FCode, messages included, or adds it.
  bool Update(const Dictionary& action) noexcept;
  // Marks an action deleted. The user is asked before the last live one goes.
  bool Remove(TextView code) noexcept;
  // Marks all actions deleted, after asking the user.
  void RemoveAll() noexcept;

  // The extra message variables; unset before the first were added.
  const Dictionary& GetAppendVariables() const noexcept { return appendVariables_; }
  // Stores each entry of the package, replacing whole entries of the same key. Always answers false.
  bool AddAppendVariables(const Dictionary& variables) noexcept;
  // Writes the bytes to a file of that name in the "temp" folder beside the library, after emptying the folder. Answers
  // the file's path; the empty text after a failure, of which nothing is shown.
  Text DownloadFile(const Value& bytes, TextView fileName) const noexcept;

 private:
  struct Found {
    Text key;
    Dictionary action;
  };

  void RequireBinding(TextView operation) const;
  void Load();
  std::optional<Error> LoadReported() noexcept;
  std::optional<Found> Find(TextView code) const;
  std::optional<Found> FindReported(TextView code) const noexcept;
  bool Accept(const Dictionary& action) const;
  Dictionary Prepare(const Dictionary& action);
  void Replace(const Found& found, const Dictionary& copy);
  void Store(const Dictionary& copy, const Key* replacedKey = nullptr);
  void WriteToMiddleTier();
  bool IsLastLive(TextView code) const;
  Component Catalogue();
  void AssignRightMask() noexcept;

  std::int32_t classTypeId_ = 0;
  Dictionary actions_;
  Dictionary classType_;
  Vector classTypeEntry_;
  Dictionary tableInfo_;
  Vector predefineActions_;
  Dictionary appendVariables_;
};

}  // namespace tavio
