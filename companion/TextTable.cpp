#include "companion/TextTable.h"

#include <algorithm>

namespace tavio::companion {
namespace {

struct Range {
  Char first, last;
};
constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3},
                           {0xF900, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}};

bool IsWide(Char unit) noexcept {
  return std::any_of(std::begin(kWide), std::end(kWide),
                     [&](const Range& range) { return unit >= range.first && unit <= range.last; });
}

std::size_t ColumnsOf(TextView text) noexcept {
  return text.size() + static_cast<std::size_t>(std::count_if(text.begin(), text.end(), &IsWide));
}

}  // namespace

Text Plain(TextView text, Lines lines) {
  Text plain(text);
  for (auto& unit : plain) {
    const bool isEnd = unit == L'\n' || unit == L'\r';
    const bool isControl = unit < L' ' || (unit >= 0x7F && unit < 0xA0);
    if (isControl && !(isEnd && lines == Lines::kKept)) unit = L' ';
  }
  return plain;
}

Text TextTable(const std::vector<Cells>& rows) {
  std::vector<std::size_t> widths;
  for (const auto& cells : rows) {
    widths.resize(std::max(widths.size(), cells.size()));
    for (std::size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], ColumnsOf(cells[i]));
  }
  Text table;
  for (const auto& cells : rows) {
    Text line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      line += Plain(cells[i], Lines::kJoined);
      if (i + 1 < cells.size()) line.append(widths[i] - ColumnsOf(cells[i]) + 2, L' ');
    }
    line.erase(line.find_last_not_of(L' ') + 1);
    table += line + L'\n';
  }
  return table;
}

}  // namespace tavio::companion
