#include "foundation/PropsString.h"
#include "tests/rules/fuzz/Fuzz.h"

using namespace tavio;

// A value never holds a separator, and stands in the string behind its name.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  TextInput input(bytes, count);
  const Text name = input.Next();
  const Text props = input.Next();
  const Text value = FindPropValue(props, name);
  Require(value.empty() || name.find(u';') != Text::npos || value.find(u';') == Text::npos);
  Require(value.empty() || props.find(name + u'=' + value) != Text::npos);
  return 0;
}
