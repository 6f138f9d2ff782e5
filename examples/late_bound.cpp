// Lists the actions of a bill type, and takes one out where its code is given:  late_bound [class type ID [code]]
// Nothing but Windows is needed to compile it:
//   cl /std:c++17 /EHsc late_bound.cpp
//   x86_64-w64-mingw32-g++ -std=c++17 -municode -static late_bound.cpp -o late_bound.exe -lole32 -loleaut32 -luuid
#include <windows.h>
#include <comdef.h>
#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cwchar>
#include <vector>

using _com_util::CheckError;

// A member by name. `kind` is DISPATCH_METHOD, or for a property DISPATCH_PROPERTYGET or DISPATCH_PROPERTYPUT.
_variant_t Call(const _variant_t& owner, WORD kind, const wchar_t* member, std::vector<_variant_t> arguments = {}) {
  IDispatch* object = V_VT(&owner) == VT_DISPATCH ? V_DISPATCH(&owner) : nullptr;
  if (!object) _com_issue_error(E_POINTER);
  LPOLESTR name = const_cast<wchar_t*>(member);
  DISPID id = 0, assigned = DISPID_PROPERTYPUT;
  CheckError(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
  std::reverse(arguments.begin(), arguments.end());
  DISPPARAMS passed = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  if (kind == DISPATCH_PROPERTYPUT) passed = {arguments.data(), &assigned, passed.cArgs, 1};
  _variant_t result;
  EXCEPINFO failure = {};
  const HRESULT outcome = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &passed, &result, &failure, nullptr);
  for (BSTR text : {failure.bstrSource, failure.bstrDescription, failure.bstrHelpFile}) {
    if (text) std::fputws(_bstr_t(text, false) + L"\n", stdout);
  }
  CheckError(outcome);
  return result;
}

// What a by-reference parameter takes: the text itself, which must outlive the call.
VARIANT ByReference(_bstr_t& text) {
  VARIANT argument = {};
  V_VT(&argument) = VT_BYREF | VT_BSTR;
  V_BSTRREF(&argument) = &text.GetBSTR();
  return argument;
}

void Run(long classTypeId, const wchar_t* unwanted) {
  CLSID id = {};
  IDispatch* made = nullptr;
  CheckError(CLSIDFromProgID(L"TavioClassBillAction.BillActions", &id));
  CheckError(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&made)));
  const _variant_t actions(made, false);
  Call(actions, DISPATCH_PROPERTYPUT, L"ClassTypeID", {classTypeId});
  Call(actions, DISPATCH_METHOD, L"Initialize");
  if (_bstr_t code = unwanted; unwanted) {
    const bool removed = Call(actions, DISPATCH_METHOD, L"Remove", {ByReference(code)});
    if (!removed || !static_cast<bool>(Call(actions, DISPATCH_METHOD, L"Save"))) _com_issue_error(E_FAIL);
  }
  const _variant_t all = Call(actions, DISPATCH_METHOD, L"GetBillActions");
  for (long i = 1, count = Call(all, DISPATCH_PROPERTYGET, L"Count"); i <= count; ++i) {
    const _bstr_t code(Call(all, DISPATCH_PROPERTYGET, L"Name", {i}));
    const _variant_t action = Call(actions, DISPATCH_METHOD, L"Item", {code});
    const _bstr_t name(Call(action, DISPATCH_METHOD, L"GetValue", {L"FName"}));
    const _bstr_t scenarios(Call(action, DISPATCH_METHOD, L"GetValue", {L"FEnvironment"}));
    std::fputws(code + L"  " + name + L"  scenarios " + scenarios + L"\n", stdout);
  }
}

int wmain(int argc, wchar_t** argv) try {
  _setmode(_fileno(stdout), _O_U8TEXT);
  CheckError(CoInitialize(nullptr));
  Run(argc > 1 ? std::wcstol(argv[1], nullptr, 10) : 1005, argc > 2 ? argv[2] : nullptr);
  CoUninitialize();
  std::fputws(L"Done.\n", stdout);
  return 0;
} catch (const _com_error& error) {
  wchar_t number[16];
  std::swprintf(number, 16, L"0x%08lX", error.Error());
  std::fputws(_bstr_t(L"Failed: ") + number + L"\n", stdout);
  return 1;
}
