#include <TavioClassBillAction.h>

#include "bench/Bench.h"
#include "bench/Roads.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio::bench {
namespace {

ComPtr<IDispatch> NewMessageObject() {
  const HMODULE library = LoadLibraryW((GetAppFolder() + L"TavioClassBillAction.dll").c_str());
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto get =
      reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  ComPtr<IDispatch> object;
  Check(get(__uuidof(::Message), IID_PPV_ARGS(&factory)));
  Check(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)));
  return object;
}

}  // namespace

void MeasureDispatch() {
  const auto object = NewMessageObject();
  ComPtr<_Message> early;
  ComPtr<ITypeInfo> info;
  Check(object.As(&early));
  Check(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info));
  const Value number(std::int32_t{1005});
  VARIANT arguments[] = {number.Raw()};
  DISPID assigned = DISPID_PROPERTYPUT;
  DISPPARAMS parameters = {arguments, &assigned, 1, 1};
  constexpr DISPID kClassTypeId = 1;
  const double direct = Seconds(
      [&] { info->Invoke(early.Get(), kClassTypeId, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr, nullptr); });
  const double late = Seconds([&] {
    object->Invoke(kClassTypeId, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr, nullptr,
                   nullptr);
  });
  PrintRatio("late-bound property put / ITypeInfo::Invoke on the vtable", late, direct, 3);
}

}  // namespace tavio::bench
