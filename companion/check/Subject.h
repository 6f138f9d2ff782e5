#pragma once

#include <map>
#include <set>
#include <vector>

#include "companion/Packages.h"

namespace tavio::companion {

// What is checked: the actions and messages of a bill type, as plain data.

struct CheckedField {
  Text name;
  Text caption;
  Text page;
  bool isVariable = false;  // a stored, visible header field
  bool holdsUser = false;   // a stored header field that brings in a recipient
};

struct CheckedMessage {
  std::int32_t mask = 0;
  Text title = {};
  Text text = {};
  std::map<Text, std::vector<std::int32_t>> recipients = {};  // users by list; other types of recipients by list alone
};

struct CheckedAction {
  Text code;
  std::int32_t mask = 0;
  std::int32_t rights = 0;
  std::vector<CheckedMessage> messages = {};
};

struct Subject {
  std::vector<CheckedField> fields;
  std::vector<CheckedAction> actions;
  std::vector<std::int32_t> scenarios;  // masks of the catalogue
  std::set<Text> known;                 // names that hosts add: variables of AddVariable and of groups
};

std::vector<CheckedField> FieldsFrom(const Dictionary& tableInfo);
// Without those that are marked deleted.
std::vector<CheckedAction> ActionsFrom(const Dictionary& actions);
std::vector<std::int32_t> CatalogueScenarios();
// Of a stored bill type. Raises Error as Templates and LoadedActions do.
Subject SubjectOf(std::int32_t type);

}  // namespace tavio::companion
