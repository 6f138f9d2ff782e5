#include "tests/support/FakeRecords.h"

#include "foundation/Error.h"

namespace tavio::test {

FakeRecords::FakeRecords(Vector records) : records_(std::move(records)) {
  On(L"EOF", [this](Arguments&) { return Value(position_ > records_.Count()); });
  On(L"MoveNext", [this](Arguments&) {
    ++position_;
    return Value();
  });
  On(L"Fields", [this](Arguments&) { return Value(fields_.New()); });
  fields_.On(L"Item", [this](Arguments& a) {
    const auto record = records_.Record(position_);
    const auto name = a.At(0).ToText();
    if (!record.Lookup(Key(TextView(name)))) throw Error(E_INVALIDARG, L"Records", name);
    current_ = record.Get(Key(TextView(name)))->Copy();
    return Value(field_.New());
  });
  field_.On(L"Value", [this](Arguments&) { return current_.Copy(); });
}

}  // namespace tavio::test
