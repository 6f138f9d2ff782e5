#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "Input.h"
#include "foundation/values/DecimalText.h"
#include "foundation/values/MParse.h"
#include "foundation/values/PropsString.h"
#include "message/MessageTemplate.h"

namespace tavio::fuzz {
namespace {

// From 1; 0 where `part` is not found at `start` or behind it.
std::size_t InStr(std::size_t start, const Text& text, const Text& part) {
  for (auto position = start; position + part.size() <= text.size() + 1; ++position) {
    if (Text(text, position - 1, part.size()) == part) return position;
  }
  return 0;
}

Text Trimmed(Text text) {
  while (!text.empty() && text.front() == u' ') text.erase(0, 1);
  while (!text.empty() && text.back() == u' ') text.pop_back();
  return text;
}

Text SplitOff(Text& text, Char delimiter) {
  Text head;
  while (!text.empty() && text.front() != delimiter) {
    head += text.front();
    text.erase(0, 1);
  }
  if (!text.empty()) text.erase(0, 1);
  return head;
}

std::optional<std::int32_t> WrittenNumber(const Text& text) {
  std::string digits;
  for (const auto unit : text) digits += unit < 128 ? static_cast<char>(unit) : '?';
  const auto sign = digits.starts_with('-') ? 1u : 0u;
  if (digits.size() == sign || digits.size() > sign + 10) return std::nullopt;
  if (digits.find_first_not_of("0123456789", sign) != std::string::npos) return std::nullopt;
  const auto number = std::stoll(digits);
  if (number < INT32_MIN || number > INT32_MAX) return std::nullopt;
  return static_cast<std::int32_t>(number);
}

Text WrittenValue(Text props, const Text& name) {
  if (!props.ends_with(u';')) props += u';';
  const auto pattern = name + u'=';
  const auto found = InStr(1, props, pattern);
  if (found == 0) return {};
  props.erase(0, found - 1);
  const auto pair = SplitOff(props, u';');
  Text value;
  for (auto i = pattern.size(); i < pair.size(); ++i) value += pair[i];
  return value;
}

Text WrittenNextValue(Text& text) {
  text = Trimmed(text);
  if (!text.starts_with(u'{')) return Trimmed(SplitOff(text, u';'));
  text.erase(0, 1);
  const auto value = SplitOff(text, u'}');
  SplitOff(text, u';');
  return Trimmed(value);
}

std::vector<std::pair<Text, Text>> WrittenPairs(Text props) {
  std::vector<std::pair<Text, Text>> pairs;
  for (;;) {
    const auto name = Trimmed(SplitOff(props, u'='));
    const auto value = WrittenNextValue(props);
    if (name.empty()) return pairs;
    pairs.emplace_back(name, value);
  }
}

// Positions count from 1.
Text WrittenRewriting(const Text& text) {
  auto open = InStr(1, text, u"[");
  if (open == 0) return text;
  Text result(text, 0, open - 1);
  for (;;) {
    const auto close = InStr(open, text, u"]");
    if (close == 0) return result + text.substr(open - 1);
    result += u"<" + text.substr(open, close - open - 1) + u">";
    open = InStr(close + 1, text, u"[");
    if (open == 0) return result + text.substr(close);
    result += text.substr(close, open - close - 1);
  }
}

// Lends what it writes; every so many names it writes for good, and all that was lent until then goes.
Text Rewritten(const Text& text, std::size_t settles) {
  auto given = std::make_unique<Text>(text);
  Rewriting rewriting(*given);
  std::deque<Text> lent;
  for (std::size_t i = 1; rewriting.NextName(); ++i) {
    auto written = u"<" + Text(rewriting.Name()) + u">";
    if (settles == 0 || i % settles != 0) {
      rewriting.Lend(lent.emplace_back(std::move(written)));
    } else {
      rewriting.Write(written);
      given.reset();
      lent.clear();
    }
  }
  return rewriting.ToText();
}

}  // namespace

void CheckDecimalText(Input input) {
  const auto text = input.Rest();
  Require(ReadDecimal(text) == WrittenNumber(text));
}

void CheckPropsString(Input input) {
  const auto name = input.Line();
  const auto props = input.Rest();
  Require(FindPropValue(props, name) == WrittenValue(props, name));
}

void CheckMParse(Input input) {
  const auto props = input.Rest();
  std::vector<std::pair<Text, Text>> pairs;
  for (const auto& [name, value] : ParsePairs(props)) pairs.emplace_back(name, value);
  Require(pairs == WrittenPairs(props));
}

void CheckTemplate(Input input) {
  const auto text = input.Rest();
  for (const std::size_t settled : {0, 1, 2, 3}) Require(Rewritten(text, settled) == WrittenRewriting(text));
}

}  // namespace tavio::fuzz
