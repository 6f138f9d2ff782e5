#include "companion/preview/Variables.h"

#include <algorithm>
#include <cstdio>

#include "foundation/values/CodePage.h"
#include "message/MessageTemplate.h"

namespace tavio::companion {
namespace {

Text Bracketed(const Text& name) { return L'[' + name + L']'; }

// A unit that no text has, between the names of one translation.
constexpr Char kBetween = 0xFFFF;

// What stands for each name when the library fills in values. All of them in one translation, which is logged like any.
std::vector<Text> ValuesOf(const Component& message, const std::vector<Text>& names) {
  Text all;
  for (const auto& name : names) all += Bracketed(name) + kBetween;
  const Text translated = Translate(message, all, Translation::kValues);
  std::vector<Text> values;
  for (std::size_t begin = 0, end; (end = translated.find(kBetween, begin)) != Text::npos; begin = end + 1) {
    values.push_back(translated.substr(begin, end - begin));
  }
  values.resize(names.size());
  return values;
}

Origin OwnerOf(const Key& name, const Dictionary& tableInfo) {
  if (!tableInfo) return Origin::kFieldOrHost;
  return tableInfo.GetValue(name)->IsObject() ? Origin::kField : Origin::kHost;
}

// Where `value`, which the library put for the name, came from.
Variable Explained(const Text& name, Text value, const Dictionary& list, const Dictionary& tableInfo) {
  Variable variable;
  variable.name = name;
  variable.value = std::move(value);
  const Key key{TextView(name)};
  if (!list || !list.Lookup(key)) {
    variable.why = words::kNoVariable;
    return variable;
  }
  const Dictionary entry(*list.Get(key));
  entry.GetValue(L"FCaption"_key)->AppendTo(variable.caption);
  const bool hasValue = entry.Lookup(L"FValue"_key);
  Text own;
  if (hasValue) entry.Get(L"FValue"_key)->AppendTo(own);
  if (hasValue && own == variable.value) {
    variable.origin = OwnerOf(key, tableInfo);
  } else if (variable.value != Bracketed(name)) {
    variable.origin = Origin::kGroup;
  } else {
    variable.why = hasValue ? words::kGroupOnly : words::kNoValue;
  }
  return variable;
}

// One character as it is shown, from one or two units.
Text Shown(TextView character) {
  std::uint32_t code = character[0];
  if (character.size() == 2) code = 0x10000 + ((code - 0xD800) << 10) + (character[1] - 0xDC00u);
  char name[16];
  std::snprintf(name, sizeof name, " (U+%04X)", static_cast<unsigned>(code));
  return Text(character) + FromUtf8(name);
}

bool IsLost(TextView character) {
  bool replaced = false;
  ToCodePage(CP_ACP, character, WC_NO_BEST_FIT_CHARS, &replaced);
  return replaced;
}

}  // namespace

std::vector<Text> NamesIn(TextView text) {
  std::vector<Text> names;
  for (Rewriting rewriting(text); rewriting.NextName();) {
    const auto name = rewriting.Name();
    if (std::find(names.begin(), names.end(), name) == names.end()) names.emplace_back(name);
  }
  return names;
}

Text Translate(const Component& message, const Text& text, Translation translation) {
  bool captions = translation == Translation::kCaptions, values = !captions, names = false;
  return message.Call(L"TransMessage", text, ByRef(captions), ByRef(values), ByRef(names)).ToText();
}

std::vector<Variable> VariablesOf(const Component& message, const Text& text, const Dictionary& tableInfo) {
  const Dictionary list(message.Call(L"GetVariableList"));
  auto names = NamesIn(text);
  const auto used = names.size();
  const auto count = list ? list.Count() : 0;
  for (std::int32_t i = 1; i <= count; ++i) {
    Text name = list.Name(i);
    const bool listed = std::find(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(used), name) !=
                        names.begin() + static_cast<std::ptrdiff_t>(used);
    if (!listed) names.push_back(std::move(name));
  }
  auto values = ValuesOf(message, names);
  std::vector<Variable> variables;
  for (std::size_t i = 0; i < names.size(); ++i) {
    variables.push_back(Explained(names[i], std::move(values[i]), list, tableInfo));
    variables.back().isUsed = i < used;
  }
  return variables;
}

std::vector<Text> LostIn(TextView text) {
  std::vector<Text> lost;
  if (!IsLost(text)) return lost;
  while (!text.empty()) {
    const bool pair = text.size() > 1 && IS_SURROGATE_PAIR(text[0], text[1]);
    const auto character = text.substr(0, pair ? 2 : 1);
    text.remove_prefix(character.size());
    if (!IsLost(character)) continue;
    auto shown = Shown(character);
    if (std::find(lost.begin(), lost.end(), shown) == lost.end()) lost.push_back(std::move(shown));
  }
  return lost;
}

}  // namespace tavio::companion
