#include "tests/support/ForeignRecord.h"

#include "foundation/Error.h"

namespace tavio::test {

ForeignRecord::ForeignRecord(Dictionary content) {
  const auto store = [content](Arguments& a) {
    content.Set(Key(a.At(0).ToText()), a.At(1));
    return Value();
  };
  const auto read = [content](Arguments& a) {
    const Key key(a.At(0).ToText());
    if (!content.Lookup(key)) throw Error(E_INVALIDARG, L"Host", L"无此字段");
    return content.Get(key)->Copy();
  };
  On(L"Value", read, store);
  On(L"Count", [content](Arguments&) { return Value(content.Count()); });
  On(L"Name", [content](Arguments& a) { return Value(TextView(content.Name(a.At(0).ToInt32()))); });
  On(L"Lookup", [content](Arguments& a) { return Value(content.Lookup(Key(a.At(0).ToText()))); });
  On(L"GetValue", [content](Arguments& a) { return content.GetValue(Key(a.At(0).ToText()), a.OrEmpty(1))->Copy(); });
  On(L"Remove", [content](Arguments& a) {
    content.Remove(Key(a.At(0).ToText()));
    return Value();
  });
  for (const auto* copying : {L"Clone", L"CloneAll"}) {
    On(copying, [content](Arguments&) { return content.Clone().AsValue(); });
  }
}

LateBound::Method Failing(const wchar_t* description) {
  return
      [description](Arguments&) -> Value { throw Error(static_cast<HRESULT>(0x80040123), L"Platform", description); };
}

}  // namespace tavio::test
