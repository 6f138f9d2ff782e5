#include "foundation/packages/Component.h"

#include "foundation/values/Error.h"

namespace tavio {

Component Component::Create(const wchar_t* progId) {
  CLSID id;
  ComPtr<IDispatch> object;
  HRESULT result = CLSIDFromProgID(progId, &id);
  if (SUCCEEDED(result)) result = CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_PPV_ARGS(&object));
  if (FAILED(result)) throw Error::CannotCreate(progId, result);
  return Component(std::move(object));
}

void Component::Assign(const wchar_t* property, const Value& value) const {
  VARIANT arguments[] = {value.Raw()};
  InvokeByName(Set(), property, value.IsObject() ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT, arguments);
}

IDispatch* Component::Set() const {
  if (!object_) throw Error::NotSet();
  return object_.Get();
}

}  // namespace tavio
