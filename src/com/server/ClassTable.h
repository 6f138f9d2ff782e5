#pragma once

#include <windows.h>
#include <unknwn.h>

#include <span>

namespace tavio::com {

// One creatable class of a server.
struct ClassRow {
  CLSID id;
  const wchar_t* progId;
  const wchar_t* description;
  // Makes an object and asks it for an interface; releases it again if it has none such.
  HRESULT (*make)(REFIID iid, void** object) noexcept;
};

// A server described as data. Each server defines the one instance, which drives its factories and its registration.
struct ServerTable {
  std::span<const ClassRow> classes;
  // Whether a type library is embedded. Its identifier is read from it.
  bool hasTypeLibrary;
  // Registration is refused if one of the ProgIDs belongs to somebody else's class.
  bool refusesForeignClasses;
  // Lets go of what was kept between calls, when the server may be unloaded; null if it keeps nothing.
  void (*forget)() noexcept = nullptr;
};

extern const ServerTable kServer;

}  // namespace tavio::com
