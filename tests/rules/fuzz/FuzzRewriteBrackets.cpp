#include "message/MessageTemplate.h"
#include "tests/rules/fuzz/Fuzz.h"

using namespace tavio;

// Put back in brackets, every name gives the text again; a name holds no "]"; taking names out leaves no closed
// bracket.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  const Text text = TextInput(bytes, count).Next();
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
  return 0;
}
