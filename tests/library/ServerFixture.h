#pragma once

#include <TavioClassBillAction.h>

#include <filesystem>

#include "foundation/AppFolder.h"
#include "foundation/Error.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {

using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();
using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

inline const Text& ServerFolder() {
  static const Text folder = std::filesystem::path(GetAppFolder() + L"..\\bin\\").lexically_normal().wstring();
  return folder;
}

template <class Function>
Function From(const Text& library, const char* name) {
  const HMODULE module = LoadLibraryW(library.c_str());
  return reinterpret_cast<Function>(reinterpret_cast<void*>(module ? GetProcAddress(module, name) : nullptr));
}

// One late-bound call, as a host makes it.
struct Call {
  const wchar_t* member;
  std::vector<VARIANT> arguments = {};  // in source order, borrowed
  WORD flags = DISPATCH_METHOD;
  std::vector<const wchar_t*> names = {};  // of the last arguments

  Value result = Value();
  Text description = Text();

  HRESULT On(IDispatch* object) {
    std::vector<LPOLESTR> all = {const_cast<LPOLESTR>(member)};
    for (const auto* name : names) all.push_back(const_cast<LPOLESTR>(name));
    std::vector<DISPID> ids(all.size());
    const HRESULT found = object->GetIDsOfNames(IID_NULL, all.data(), static_cast<UINT>(all.size()), 0, ids.data());
    if (FAILED(found)) return found;
    std::vector<DISPID> named(ids.rbegin(), ids.rend() - 1);
    const bool assigns = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (assigns) named.assign(1, DISPID_PROPERTYPUT);
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters = {reversed.data(), named.data(), static_cast<UINT>(reversed.size()),
                             static_cast<UINT>(named.size())};
    EXCEPINFO info = {};
    const HRESULT outcome = object->Invoke(ids[0], IID_NULL, 0, flags, &parameters, result.Receive(), &info, nullptr);
    if (outcome != DISP_E_EXCEPTION) return outcome;
    const Error error = Error::FromInvoke(outcome, info);
    description = error.Description();
    return error.Number();
  }
};

inline VARIANT Variable(Value& value) {
  VARIANT variable;
  VariantInit(&variable);
  variable.vt = VT_BYREF | VT_VARIANT;
  variable.pvarVal = value.InPlace();
  return variable;
}

// The built server, unregistered. It keeps the texts component for good, so that is made before what a test counts.
class ServerTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    texts = new FakeTexts;
    BoxWatcher boxes;
    Call{L"NewMessage"}.On(Make(__uuidof(::Message)).Get());
    boxes.Take();
    keptForGood = LivingFakes();
  }
  static void TearDownTestSuite() { delete texts; }
  ~ServerTest() override {
    EXPECT_EQ(boxes.Take(), Boxes{});
    EXPECT_EQ(LivingFakes(), keptForGood);
    for (const auto& library : {ServerFolder() + L"TavioClassBillAction.dll", ServerFolder() + L"Vexo10.dll",
                                GetAppFolder() + L"Vexo10.dll"}) {
      EXPECT_EQ(From<CanUnloadNow>(library, "DllCanUnloadNow")(), S_OK) << Utf8(library);
    }
  }

  template <class Interface = IDispatch>
  static ComPtr<Interface> Make(const CLSID& id) {
    ComPtr<IClassFactory> factory;
    ComPtr<Interface> object;
    const auto get = From<GetClassObject>(ServerFolder() + L"TavioClassBillAction.dll", "DllGetClassObject");
    EXPECT_EQ(get(id, IID_PPV_ARGS(&factory)), S_OK);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)), S_OK);
    return object;
  }

  static inline FakeTexts* texts = nullptr;
  static inline long keptForGood = 0;
  BoxWatcher boxes;
};

// Calls `visit` with the type information of an interface and each member of its own.
template <class Visit>
void ForEachMember(REFIID iid, Visit&& visit) {
  ComPtr<ITypeLib> library;
  ComPtr<ITypeInfo> info;
  ASSERT_EQ(LoadTypeLibEx((ServerFolder() + L"TavioClassBillAction.dll").c_str(), REGKIND_NONE, &library), S_OK);
  ASSERT_EQ(library->GetTypeInfoOfGuid(iid, &info), S_OK);
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
    if (function->memid < 0x60000000) visit(info.Get(), *function);
    info->ReleaseFuncDesc(function);
  }
}

}  // namespace tavio::test
