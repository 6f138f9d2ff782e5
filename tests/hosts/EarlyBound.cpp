// EarlyBound <folder>: a host that knows the library by its header, as a compiled one does. The development platform
// starts from its seed in <folder>.

#include <windows.h>
#include <TavioClassBillAction.h>

#include <filesystem>
#include <iostream>

#include "foundation/packages/Component.h"
#include "foundation/values/BString.h"

namespace tavio::test {
namespace {

using Microsoft::WRL::ComPtr;

int failures = 0;

bool Check(const char* name, bool holds) {
  if (!holds) ++failures;
  std::cout << (holds ? "ok " : "FAILED ") << name << '\n';
  return holds;
}

template <class Interface>
ComPtr<Interface> Create(REFCLSID id) {
  ComPtr<Interface> made;
  CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                   reinterpret_cast<void**>(made.GetAddressOf()));
  return made;
}

// What the platform knows of a business object.
template <class... Ids>
ComPtr<IDispatch> Ask(const wchar_t* member, Ids... ids) {
  return Component::Create(L"TavioMClass.ClassInfo").Call(member, L"Language=CHS;", ids...).ToObject();
}

// The library of the object's own type information, as a compiler that only knows the registry finds it.
void CheckTypeLibrary(_BillActions* actions) {
  ComPtr<ITypeInfo> own, registered;
  ComPtr<ITypeLib> library, fromRegistry;
  UINT index = 0;
  TLIBATTR* attributes = nullptr;
  Check("type information", SUCCEEDED(actions->GetTypeInfo(0, LOCALE_USER_DEFAULT, &own)));
  if (!own || FAILED(own->GetContainingTypeLib(&library, &index)) || FAILED(library->GetLibAttr(&attributes))) return;
  LoadRegTypeLib(attributes->guid, 1, 0, LOCALE_NEUTRAL, &fromRegistry);
  library->ReleaseTLibAttr(attributes);
  Check("the interface in the registered library",
        fromRegistry && SUCCEEDED(fromRegistry->GetTypeInfoOfGuid(__uuidof(_BillActions), &registered)));
}

void CheckSending(_BillActions* actions) {
  const auto message = Create<_Message>(__uuidof(Message));
  if (!Check("Message created", message != nullptr)) return;
  message->put_ClassTypeID(1005);
  message->putref_ClassType(Ask(L"GetClassType", 1005).Get());
  message->putref_TableInfo(Ask(L"GetTableInfo", 1005).Get());
  message->RefreshVariableList();
  ComPtr<IDispatch> package, bill = Ask(L"GetBillData", 1005, 5002);
  actions->GetMessage(BString(L"MultiCheck").Get(), 8, &package);
  VARIANT_BOOL done = VARIANT_FALSE;
  Check("SetMessage", SUCCEEDED(message->SetMessage(package.Get(), &done)) && done == VARIANT_TRUE);
  IDispatch* given = bill.Get();
  Check("RefreshVariableValue", SUCCEEDED(message->RefreshVariableValue(&given, &done)) && done == VARIANT_TRUE);
  VARIANT_BOOL captions = VARIANT_FALSE, values = VARIANT_TRUE;
  BString preview;
  message->TransMessage(BString(L"[FBillNo] [FQty]").Get(), &captions, &values, nullptr, preview.Receive());
  Check("TransMessage, one flag left null", preview.View() == L"CGSQ000002 3");
  Check("SendMessage", SUCCEEDED(message->SendMessage(nullptr, &done)) && done == VARIANT_TRUE);
  Check("a result that nobody takes", message->SendMessage(nullptr, nullptr) == E_POINTER);
}

int Run() {
  const auto actions = Create<_BillActions>(__uuidof(BillActions));
  if (!Check("BillActions created", actions != nullptr)) return failures;
  CheckTypeLibrary(actions.Get());
  actions->put_ClassTypeID(1005);
  actions->Initialize();
  CheckSending(actions.Get());
  return failures;
}

}  // namespace
}  // namespace tavio::test

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) return std::cout << "usage: EarlyBound <folder>\n", 2;
  const std::filesystem::path folder = std::filesystem::absolute(argv[1]);
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder.parent_path());
  SetEnvironmentVariableW(L"TAVIO_DEV_FOLDER", folder.c_str());
  CoInitialize(nullptr);
  const int failures = tavio::test::Run();
  CoFreeUnusedLibraries();
  CoUninitialize();
  std::cout << "finished\n";
  return failures > 0;
}
