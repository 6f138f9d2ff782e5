#pragma once

#include "companion/Packages.h"
#include "companion/Words.h"

namespace tavio::companion {

// The text of an export, and places in it.

// Line and column, "3:14: ". The place of a member is its first occurrence, or the beginning of the file.
Text PlaceOf(const std::string& file, std::size_t position);
Text PlaceOf(const std::string& file, const char* member);

[[noreturn]] void RefuseAt(const Text& place, const Word& why, const Text& detail = {});

// Raises Error with line and column for what is no JSON, nested too deeply, or holds what packages cannot.
Json ParseFile(const std::string& file);

}  // namespace tavio::companion
