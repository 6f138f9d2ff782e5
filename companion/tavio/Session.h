#pragma once

#include "foundation/packages/Component.h"

namespace tavio {

// A class of the companion: the registered one, else that of the TavioCompanion.dll beside this program. Raises Error
// if there is neither.
Component CreateCompanion(const wchar_t* progId, const CLSID& id);

// A program that talks to the library: in an apartment of its own, with nobody at its message boxes.
class Session {
 public:
  Session();
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Collects and answers the library's boxes from here on, and says on the error stream what is in them at the end.
  void Unattended();

 private:
  void TellBoxes() const;

  Component boxes_{nullptr};
};

// Exit codes.
inline constexpr int kFine = 0;
inline constexpr int kFindings = 1;
inline constexpr int kCouldNot = 2;

}  // namespace tavio
