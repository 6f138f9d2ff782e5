#pragma once

#include "foundation/packages/Component.h"
#include "tests/support/Platform.h"

namespace tavio::test {

// The objects that operations are tried on, as a host that calls by name has bound them, with its packages.
struct Host {
  Host();
  virtual ~Host() = default;
  // What is loaded when it is first needed.
  void Load() const { scenarios.Call(L"GetList"), catalogue.Call(L"GetList"); }
  // All packages that an operation may change.
  virtual std::string State() const;
  // An object, as "catalogue." or "scenarios.", or the one that has most operations; and its class.
  const Component& Object(const std::wstring& name) const;
  static std::wstring ClassOf(const std::wstring& name);

  // A text that the host overwrites as soon as the library calls it.
  Value Lent(const wchar_t* text) {
    Value value(text);
    lent = value.Raw().bstrVal;
    return value;
  }
  wchar_t nothing = 0;
  wchar_t* lent = &nothing;
  Value code;

  Dictionary given = Named(L"given", Record({{L"FCode", L"Save"}, {L"Messages", Named(L"messages", Record({}))}}));
  Component actions, catalogue, scenarios;
};

struct Sender : Host {
  Sender();
  std::string State() const override;
  const Component& Object(const std::wstring&) const { return message; }
  static std::wstring ClassOf(const std::wstring&) { return L"Message"; }

  Dictionary tableInfo;
  Dictionary bill;
  Dictionary recipients = Users(L"sent to", {2, 5});
  Dictionary variable = Named(L"variable", Record({{L"FName", L"own"}, {L"FCaption", L"自"}}));
  FakeObject service;
  Component message;
};

}  // namespace tavio::test
