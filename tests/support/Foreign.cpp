#include "tests/support/Foreign.h"

#include <Vexo.h>

#include "foundation/packages/NewContainer.h"
#include "foundation/values/Error.h"
#include "foundation/values/InvokeByName.h"

namespace tavio::test {
namespace {

constexpr const wchar_t* kMembers[] = {L"Count", L"Name",     L"Value",  L"Lookup", L"GetValue", L"Remove",
                                       L"Clone", L"CloneAll", L"LBound", L"UBound", L"Add",      L"Item"};

// A member that hands calls on.
LateBound::Method To(const ComPtr<IDispatch>& real, const wchar_t* member, WORD flags) {
  return [real, member, flags](Arguments& a) {
    std::vector<VARIANT> reversed;
    for (std::size_t i = a.Count(); i > 0; --i) reversed.push_back(a.Raw(i - 1));
    return InvokeByName(real.Get(), member, flags, reversed);
  };
}

ComPtr<IDispatch> New(Container kind, const IID& shown) { return ForeignContainer(NewContainer(kind), shown).New(); }

}  // namespace

ForeignContainer::ForeignContainer(ComPtr<IDispatch> real, const IID& shown) {
  for (const auto* member : kMembers) {
    if (!HasMember(real.Get(), member)) continue;
    On(member, To(real, member, DISPATCH_METHOD | DISPATCH_PROPERTYGET), To(real, member, DISPATCH_PROPERTYPUT));
  }
  AnswerFor(shown, std::move(real));
}

ForeignRecord::ForeignRecord(const Dictionary& content) : ForeignContainer(content.Object()) {
  const auto read = [content](Arguments& a) {
    const Key key(a.At(0).ToText());
    if (!content.Lookup(key)) throw Error(E_INVALIDARG, L"Host", L"无此字段");
    return content.Get(key)->Copy();
  };
  On(L"Value", read, To(content.Object(), L"Value", DISPATCH_PROPERTYPUT));
}

const ContainerKind kContainerKinds[] = {
    {"Lending", [] { return NewContainer(Container::kDictionary); }, [] { return NewContainer(Container::kVector); }},
    {"Interface", [] { return New(Container::kDictionary, __uuidof(_Dictionary)); },
     [] { return New(Container::kVector, __uuidof(_Vector)); }},
    {"Names", [] { return New(Container::kDictionary, IID_NULL); }, [] { return New(Container::kVector, IID_NULL); }},
};

}  // namespace tavio::test
