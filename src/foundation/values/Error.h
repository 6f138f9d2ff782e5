#pragma once

#include <windows.h>
#include <oaidl.h>

#include <exception>

#include "foundation/values/Text.h"

namespace tavio {

// A failure on its way to whoever reports it. `number` is an HRESULT. What the user reads is `text`, one of the system's
// own Chinese texts, localised where the failure is reported, and behind it `detail` as it stands: a component's own
// words, a name, a path. Either may be empty.
class Error : public std::exception {
 public:
  // A failure described in finished words.
  Error(HRESULT number, Text source, Text detail)
      : number_(number), source_(std::move(source)), detail_(std::move(detail)) {}
  // A failure described by a text of the system.
  static Error System(HRESULT number, TextView text, TextView detail = {}, TextView source = {});

  HRESULT Number() const noexcept { return number_; }
  const Text& Source() const noexcept { return source_; }
  const Text& SystemText() const noexcept { return text_; }
  // Text and detail with `text` in the words given for it.
  Text Description(TextView text) const;
  // In the system's own words.
  Text Description() const { return Description(text_); }
  const char* what() const noexcept override { return "tavio::Error"; }

  static Error Overflow();
  static Error TypeMismatch();
  static Error NotSet();
  static Error MissingKey(TextView key);
  static Error CannotCreate(TextView progId, HRESULT why);
  // The precondition of most operations: number 0x80040001.
  static Error NotBound(TextView source, TextView text);
  // A failed HRESULT without further information.
  static Error FromHresult(HRESULT result);
  // A failed Windows function, described by GetLastError.
  static Error FromLastError();
  // A failed call through a vtable: takes the thread's error information if the object supports it.
  static Error FromObject(IUnknown* object, REFIID iid, HRESULT result);
  // A failed Invoke: the component's own number, source and description. Frees the texts in `info`.
  static Error FromInvoke(HRESULT result, EXCEPINFO& info);

 private:
  HRESULT number_;
  Text source_;
  Text text_;
  Text detail_;
};

inline constexpr HRESULT kOwnError = static_cast<HRESULT>(0x80040001);

// Whatever is being thrown, as an Error: the one place where exceptions of other kinds are translated. Call it in a
// catch block.
Error Translate() noexcept;

// Throws FromHresult if `result` is a failure.
inline void Check(HRESULT result) {
  if (FAILED(result)) throw Error::FromHresult(result);
}

// Throws FromLastError if a Windows function failed.
inline void CheckWindows(bool done) {
  if (!done) throw Error::FromLastError();
}

}  // namespace tavio
