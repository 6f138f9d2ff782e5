#pragma once

#include <windows.h>
#include <oaidl.h>

#include <exception>

#include "foundation/Text.h"

namespace tavio {

// A failure on its way to the report of the operation. `number` is an HRESULT; `description` is what the user reads.
class Error : public std::exception {
 public:
  Error(HRESULT number, Text source, Text description)
      : number_(number), source_(std::move(source)), description_(std::move(description)) {}

  HRESULT Number() const noexcept { return number_; }
  const Text& Source() const noexcept { return source_; }
  const Text& Description() const noexcept { return description_; }
  const char* what() const noexcept override { return "tavio::Error"; }

  // The library's own failures. Their descriptions are localised.
  static Error Overflow();
  static Error TypeMismatch();
  static Error NotSet();
  static Error MissingKey(TextView key);
  static Error CannotCreate(TextView progId, HRESULT why);
  // The precondition of most operations: number 0x80040001.
  static Error NotBound(TextView source, TextView chineseText);
  // A failed HRESULT without further information.
  static Error FromHresult(HRESULT result);
  // A failed call through a vtable: takes the thread's error information where the object supports it.
  static Error FromObject(IUnknown* object, REFIID iid, HRESULT result);
  // A failed Invoke: the component's own number, source and description. Frees the texts in `info`.
  static Error FromInvoke(HRESULT result, EXCEPINFO& info);

 private:
  HRESULT number_;
  Text source_;
  Text description_;
};

// Whatever is being thrown, as an Error: the one place where exceptions of other kinds are translated. Call it in a
// catch block.
Error Translate() noexcept;

// Throws FromHresult when `result` is a failure.
inline void Check(HRESULT result) {
  if (FAILED(result)) throw Error::FromHresult(result);
}

}  // namespace tavio
