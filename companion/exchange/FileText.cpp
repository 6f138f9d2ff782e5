#include "companion/exchange/FileText.h"

#include <algorithm>

#include "companion/Members.h"
#include "companion/exchange/TypedJson.h"

namespace tavio::companion {
namespace {

// What a package may have, and what an export puts around it.
constexpr int kDeepestInFile = kDeepestPackage + 8;

// Goes through the file for the parser, which tells nobody how far it is.
struct Reading {
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  const char* at;
  std::size_t* count;

  reference operator*() const noexcept { return *at; }
  Reading& operator++() noexcept {
    ++at;
    ++*count;
    return *this;
  }
  bool operator==(const Reading& other) const noexcept { return at == other.at; }
  bool operator!=(const Reading& other) const noexcept { return at != other.at; }
};

// The parser makes a double of an integer of more than 64 bits.
bool IsLongInteger(const Json& number, std::string_view read) {
  if (!number.is_number_float()) return false;
  const auto last = read.find_last_of("0123456789");
  const auto token = read.substr(read.find_last_not_of("+-.eE0123456789", last) + 1);
  return token.find_first_of(".eE") == std::string_view::npos;
}

bool IsScalarOrMark(const Json& json) {
  return !json.is_structured() || (json.is_object() && json.size() == 1 && json.begin().key().starts_with('$'));
}

// Where the value ends that has just been read; the parser looks one character ahead of a number.
std::size_t EndOf(const Json& json, std::string_view read) {
  const auto last = json.is_object() ? read.rfind('}') : read.find_last_not_of(" \r\n\t,]}");
  return last == std::string_view::npos ? 0 : last;
}

void CheckValue(const Json& json, const std::string& file, std::size_t count) {
  if (!IsScalarOrMark(json)) return;
  const auto read = std::string_view(file).substr(0, count);
  try {
    if (IsLongInteger(json, read)) throw Error::Overflow();
    FromTypedJson(json);
  } catch (const Error&) {
    RefuseAt(PlaceOf(file, EndOf(json, read)), words::kNoValueOfPackage, FromUtf8(json.dump()));
  }
}

}  // namespace

Text PlaceOf(const std::string& file, std::size_t position) {
  position = std::min(position, file.size());
  const auto line = std::count(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(position), '\n') + 1;
  const auto start = position == 0 ? std::string::npos : file.rfind('\n', position - 1);
  const auto column = start == std::string::npos ? position + 1 : position - start;
  return std::to_wstring(line) + L":" + std::to_wstring(column) + L": ";
}

Text PlaceOf(const std::string& file, const char* member) {
  const auto found = file.find('"' + std::string(member) + '"');
  return PlaceOf(file, found == std::string::npos ? 0 : found);
}

void RefuseAt(const Text& place, const Word& why, const Text& detail) {
  Text words = place + Say(why);
  if (!detail.empty()) words += L" " + detail;
  throw Refused(words);
}

Json ParseFile(const std::string& file) {
  std::size_t count = 0;
  const auto check = [&](int depth, Json::parse_event_t event, Json& json) {
    using Event = Json::parse_event_t;
    if (depth > kDeepestInFile) RefuseAt(PlaceOf(file, count - 1), words::kTooDeep);
    if (event == Event::value || event == Event::object_end) CheckValue(json, file, count);
    return true;
  };
  const auto* begin = file.data();
  try {
    return Json::parse(Reading{begin, &count}, Reading{begin + file.size(), &count}, check);
  } catch (const Json::parse_error& error) {
    RefuseAt(PlaceOf(file, error.byte == 0 ? 0 : error.byte - 1), words::kNoExport);
  }
}

}  // namespace tavio::companion
