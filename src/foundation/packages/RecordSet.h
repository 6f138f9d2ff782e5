#pragma once

#include "foundation/packages/Component.h"

namespace tavio {

// A record set returned by a platform component, whatever object it is: read by the member names EOF, MoveNext and
// Fields. Raises Error if the object lacks them, or is none.
class RecordSet {
 public:
  explicit RecordSet(const Value& object) : records_(object.ToObject()) {}

  bool EndReached() const { return records_.Read(L"EOF").ToBool(); }
  void MoveNext() const { records_.Call(L"MoveNext"); }
  // The field of the current record; a database null if it has no value.
  Value Field(const wchar_t* name) const {
    const Component fields(records_.Read(L"Fields").ToObject());
    return Component(fields.Call(L"Item", name).ToObject()).Read(L"Value");
  }

 private:
  Component records_;
};

}  // namespace tavio
