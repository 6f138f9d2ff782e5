// What must hold of any text that hosts and users write: shared properties and message templates.

#include <cstdlib>

#include "foundation/values/MParse.h"
#include "foundation/values/PropsString.h"
#include "message/MessageTemplate.h"

namespace tavio {
namespace {

// A byte below 128 is a character of its own, so that the fuzzer finds the letters and signs that matter; above, it is
// the high byte of any 16-bit unit.
Text TextOf(const std::uint8_t* bytes, std::size_t count) {
  Text text;
  for (std::size_t i = 0; i < count; ++i) {
    const bool wide = bytes[i] >= 128 && i + 1 < count;
    const unsigned low = wide ? bytes[i + 1] : 0u;
    text.push_back(static_cast<Char>(wide ? bytes[i++] << 8 | low : bytes[i]));
  }
  return text;
}

// Stops the fuzzer, which keeps the input that led here.
void Require(bool holds) {
  if (!holds) std::abort();
}

// Names and values lie inside the string, one behind the other, and no blank stands around them; each pair's value ends
// before the next name starts, and the same pairs written in braces are read again.
void ParsePairsOf(const Text& props) {
  const auto pairs = ParsePairs(props);
  const Char* reached = props.data();
  Text written;
  for (const auto& [name, value] : pairs) {
    Require(!name.empty() && name == TrimBlanks(name) && name.find(u'=') == TextView::npos);
    Require(value == TrimBlanks(value) && name.data() >= reached);
    reached = name.data() + name.size();
    if (!value.empty()) {
      Require(value.data() >= reached);
      reached = value.data() + value.size();
    }
    Require(reached <= props.data() + props.size());
    const bool closed = value.find(u'}') == TextView::npos;
    written += Text(name) + (closed ? u"={" : u"=") + Text(value) + (closed ? u"};" : u";");
  }
  Require(ParsePairs(written) == pairs);
}

// A value never holds a separator, and stands in the string behind its name.
void FindIn(const Text& props, const Text& name) {
  const Text value = FindPropValue(props, name);
  Require(value.empty() || name.find(u';') != Text::npos || value.find(u';') == Text::npos);
  Require(value.empty() || props.find(name + u'=' + value) != Text::npos);
}

// Put back in brackets, every name gives the text again; a name holds no "]"; taking names out leaves no closed
// bracket.
void RewriteBracketsOf(const Text& text) {
  std::size_t named = 0;
  const Text same = RewriteBrackets(text, [&](TextView name, Text& result) {
    Require(name.find(u']') == TextView::npos);
    named += name.size() + 2;
    AppendBracketed(name, result);
  });
  Require(same == text);
  const Text rest = RewriteBrackets(text, [](TextView, Text&) {});
  Require(rest.size() + named == text.size());
  const auto open = rest.rfind(u'[');
  Require(named == 0 || open == Text::npos || rest.find(u']', open) == Text::npos);
}

}  // namespace
}  // namespace tavio

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  using namespace tavio;
  const Text text = TextOf(bytes, count);
  const auto end = std::min(text.find(u'\0'), text.size());
  ParsePairsOf(text);
  FindIn(text.substr(end), text.substr(0, end));
  RewriteBracketsOf(text);
  return 0;
}
