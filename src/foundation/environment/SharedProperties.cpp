#include "foundation/environment/SharedProperties.h"

#include "foundation/environment/ProcessState.h"
#include "foundation/values/PropsString.h"
#include "foundation/values/Text.h"

namespace tavio {

Value GetShareProperty(TextView name) noexcept try {
  const auto store = Component::Create(L"TavioSharedProps.PropStore");
  const auto read = [&] {
    auto processId = static_cast<std::int32_t>(GetCurrentProcessId());
    Text property(name);
    return store.Call(L"GetProperty", ByRef(processId), ByRef(property));
  };
  // Read twice, as the component's other clients do: once to learn the kind, once to keep the value.
  read();
  return read();
} catch (...) {
  return Value();
}

Text GetPropsString() noexcept try {
  const auto& process = Process();
  if (!process.propsOverride.empty()) return process.propsOverride;
  if (!process.propsOverrideObject) return GetShareProperty(L"PropsString").ToText();
  return process.propsOverrideObject->Read(L"PropsString").ToText();
} catch (...) {
  return Text();
}

Text GetPropValue(TextView key) noexcept try {
  return FindPropValue(ToUpper(GetPropsString()), ToUpper(key));
} catch (...) {
  return Text();
}

}  // namespace tavio
