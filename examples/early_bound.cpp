// Previews the message of an action for a bill that the host holds itself:  early_bound [action [scenario mask]]
// Compiled with the headers of the package, here from its folder "examples":
//   cl /std:c++17 /EHsc /I..\include early_bound.cpp
//   x86_64-w64-mingw32-g++ -std=c++17 -municode -static -I../include early_bound.cpp -o early_bound.exe -lole32 -loleaut32 -luuid
#include <TavioClassBillAction.h>
#include <Vexo.h>
#include <comdef.h>
#include <fcntl.h>
#include <io.h>
#include <wrl/client.h>

#include <cwchar>
#include <initializer_list>
#include <utility>

using _com_util::CheckError;
using Microsoft::WRL::ComPtr;

template <class Class, class Interface>
ComPtr<Interface> Create() {
  ComPtr<Interface> made;
  CheckError(CoCreateInstance(__uuidof(Class), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made)));
  return made;
}

// A package with these entries. As a value it is counted, and lives as long as who holds it.
_variant_t Package(std::initializer_list<std::pair<const wchar_t*, _variant_t>> entries) {
  const auto made = Create<Dictionary, _Dictionary>();
  for (const auto& [key, value] : entries) CheckError(made->put_Value(_bstr_t(key), value));
  return made.Get();
}

_variant_t Field(const wchar_t* key, const wchar_t* caption) {
  return Package(
      {{L"FKey", key}, {L"FCaption", caption}, {L"FNeedSave", true}, {L"FVisible", 7L}, {L"FLookUpType", 0L}});
}

void Preview(const wchar_t* action, long scenario) {
  const auto actions = Create<BillActions, _BillActions>();
  ComPtr<IDispatch> found;
  CheckError(actions->put_ClassTypeID(1005));
  CheckError(actions->Initialize());
  CheckError(actions->GetMessage(_bstr_t(action), scenario, &found));
  if (!found) _com_issue_error(TYPE_E_ELEMENTNOTFOUND);

  const auto message = Create<Message, _Message>();
  const _variant_t header = Package({{L"FBillNo", 1L}, {L"FDept", 2L}});
  const _variant_t fields = Package(
      {{L"Page1", header}, {L"FBillNo", Field(L"FBillNo", L"number")}, {L"FDept", Field(L"FDept", L"department")}});
  const _variant_t billType = Package({{L"FID", 1005L}});
  CheckError(message->putref_ClassType(V_DISPATCH(&billType)));
  CheckError(message->putref_TableInfo(V_DISPATCH(&fields)));
  // An operation that fails tells the user itself, and the host by its flag.
  VARIANT_BOOL held = VARIANT_FALSE, filled = VARIANT_FALSE, captions = VARIANT_TRUE, values = VARIANT_TRUE;
  CheckError(message->SetMessage(found.Get(), &held));
  _variant_t bill =
      Package({{L"FID", 77L}, {L"Page1", Package({{L"FBillNo", L"CGSQ000077"}, {L"FDept", L"Purchasing"}})}});
  CheckError(message->RefreshVariableValue(&V_DISPATCH(&bill), &filled));
  if (!held || !filled) _com_issue_error(E_FAIL);

  ComPtr<_Dictionary> content;
  _variant_t text;
  _bstr_t asDesigned, asSent;
  CheckError(found.As(&content));
  CheckError(content->get_Value(_bstr_t(L"FMessage"), &text));
  CheckError(message->TransMessage(_bstr_t(text), &captions, nullptr, nullptr, asDesigned.GetAddress()));
  CheckError(message->TransMessage(_bstr_t(text), nullptr, &values, nullptr, asSent.GetAddress()));
  std::fputws(asDesigned + L"\n" + asSent + L"\n", stdout);
}

int wmain(int argc, wchar_t** argv) try {
  _setmode(_fileno(stdout), _O_U8TEXT);
  CheckError(CoInitialize(nullptr));
  Preview(argc > 1 ? argv[1] : L"MultiCheck", argc > 2 ? std::wcstol(argv[2], nullptr, 10) : 8);
  CoUninitialize();
  std::fputws(L"Done.\n", stdout);
  return 0;
} catch (const _com_error& error) {
  wchar_t number[16];
  std::swprintf(number, 16, L"0x%08lX", error.Error());
  std::fputws(_bstr_t(L"Failed: ") + number + L"\n", stdout);
  return 1;
}
