#pragma once

#include "tests/library/faults/FaultTable.h"

// What comes of a broken touch.

namespace tavio::test {

// A box: a report under a label, kOwn for that of the operation, or a text alone if the label is empty. It is in the
// words of the failure, if no other ones stand here.
struct ExpectedBox {
  const wchar_t* label;
  const wchar_t* words = nullptr;
};
inline constexpr wchar_t kOwn[] = L"own";

// The result: that of a healthy run, that of a failure, or as much of the healthy one as was there by then.
enum class Result { kHealthy, kFailed, kBegun };

// The packages: as they were when it came to the broken touch, as after a healthy run, with a new collection, or with
// something in them that nobody can tell from what is right.
enum class State { kAtTouch, kHealthy, kEmptied, kAny };

struct Effect {
  std::vector<ExpectedBox> boxes;
  Result result = Result::kHealthy;
  State state = State::kHealthy;
  std::size_t files = 0;                                       // that are left
  std::pair<std::string_view, std::string_view> instead = {};  // in the packages
};

// `taken` tells that the library takes what it gets for what it asked for, or for nothing at all.
const Effect& EffectOf(std::wstring_view act, const Cell& cell, bool taken);

}  // namespace tavio::test
