#include "tests/support/Server.h"

#include <gtest/gtest.h>

#include "com/server/TypeDescription.h"
#include "tests/support/Packages.h"

namespace tavio::test {

HRESULT CanUnload(const Text& server) {
  const auto exported = Exported<HRESULT(STDAPICALLTYPE*)()>(GetModuleHandleW(server.c_str()), "DllCanUnloadNow");
  return exported ? exported() : S_OK;
}

std::vector<Member> MembersOf(const Text& server, REFIID iid) {
  std::vector<Member> members;
  ComPtr<ITypeLib> library;
  ComPtr<ITypeInfo> late, early;
  HREFTYPE reference = 0;
  Check(LoadTypeLibEx(server.c_str(), REGKIND_NONE, &library));
  Check(library->GetTypeInfoOfGuid(iid, &late));
  Check(late->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
  Check(late->GetRefTypeInfo(reference, &early));
  for (UINT i = 0; const auto described = com::FunctionAt(early.Get(), i); ++i) {
    const auto function = described.Get();
    EXPECT_EQ(function->callconv, CC_STDCALL);
    BString name, description;
    Check(early->GetDocumentation(function->memid, name.Receive(), description.Receive(), nullptr, nullptr));
    Member member = {Utf8(name.View()), Utf8(description.View()), function->memid, static_cast<WORD>(function->invkind),
                     static_cast<ULONG_PTR>(function->oVft)};
    for (SHORT p = 0; p < function->cParams; ++p) {
      const auto& type = function->lprgelemdescParam[p].tdesc;
      const auto& details = function->lprgelemdescParam[p].paramdesc;
      const bool byReference = type.vt == VT_PTR, isResult = details.wParamFlags & PARAMFLAG_FRETVAL;
      member.parameters.push_back({byReference ? type.lptdesc->vt : type.vt, byReference, isResult});
      if (!(details.wParamFlags & PARAMFLAG_FHASDEFAULT)) continue;
      member.parameters.back().otherwise = Show(Value::In(details.pparamdescex->varDefaultValue));
    }
    members.push_back(std::move(member));
  }
  return members;
}

}  // namespace tavio::test
