#pragma once

#include "companion/check/Subject.h"
#include "companion/exchange/TypedJson.h"
#include "foundation/packages/Component.h"

namespace tavio::companion {

// A bill type as a file: template, fields, actions and messages, without the numbers, versions, states and rights that
// belong to one database. The same bill type always gives the same text.
Json ExportOf(std::int32_t type);
Text ToFile(const Json& exported);

// Reads a file that ExportOf made. Raises Error with line and column if it is none, or of another bill type than
// `type` (0: any).
Json ReadExport(const std::string& file, std::int32_t type);
// What a checker sees in it; scenarios are the platform's.
Subject SubjectOf(const Json& exported);

// What an import would change, and does on Save: the stored actions with the fields of the file in their place. Fields
// that the file lacks stay, and so do actions and messages. A field is replaced whole: a list of recipients is one.
class Import {
 public:
  Import(std::int32_t type, const Json& exported);

  // One record per difference: FOperation ("add", "replace", "remove"), FPath, FValue.
  const Json& Changes() const noexcept { return changes_; }
  // Raises Error in the library's words if it is not stored; somebody may have saved meanwhile.
  void Save();

 private:
  void Merge(const Text& code, const Json& action);
  Dictionary Stored() const;

  Component actions_;
  Json changes_ = Json::array();
};

}  // namespace tavio::companion
