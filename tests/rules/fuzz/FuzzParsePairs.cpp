#include "foundation/MParse.h"
#include "tests/rules/fuzz/Fuzz.h"

using namespace tavio;

// Names and values lie inside the string, one behind the other, and no blank stands around them; each pair's value ends
// before the next name starts, and the same pairs written in braces are read again.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  const Text props = TextInput(bytes, count).Next();
  const auto pairs = ParsePairs(props);
  const Char* reached = props.data();
  Text written;
  for (const auto& [name, value] : pairs) {
    Require(!name.empty() && name == TrimBlanks(name) && name.find(u'=') == TextView::npos &&
            value == TrimBlanks(value));
    Require(name.data() >= reached);
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
  return 0;
}
