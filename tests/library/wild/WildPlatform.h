#pragma once

#include <list>
#include <random>

#include "tests/support/ImportHook.h"
#include "tests/support/Packages.h"

// A platform that does what it likes: it fails, answers and leaves behind anything, keeps what it is given, and calls the
// library back. All that is random comes from one seed.

namespace tavio::test::wild {

inline constexpr HRESULT kPlatformError = static_cast<HRESULT>(0x80040123);

class Dice {
 public:
  void Seed(std::uint32_t seed) { random_.seed(seed); }
  std::size_t Below(std::size_t limit) { return random_() % limit; }
  bool OneIn(std::size_t times) { return Below(times) == 0; }
  template <class T, std::size_t count>
  const T& Of(const T (&all)[count]) {
    return all[Below(count)];
  }

 private:
  std::mt19937 random_;
};
inline Dice dice;

// What can be passed: anything that a host could ever have, and what came from the library or went through it.
class Values {
 public:
  void Renew();
  // Of the wanted type, mostly.
  Value Any(VARTYPE wanted = VT_VARIANT) const;
  void Keep(Value value);
  // Lets everything go, and takes containers apart first: the calls may have put them into themselves.
  void Clear();

 private:
  std::vector<Value> values_;
};
inline Values values;

// Stands in for Windows towards a module: its boxes and dialogs are answered, its components are wild.
class Platform {
 public:
  // `box` answers a box; `callBack` is called wherever host code could run.
  Platform(int(WINAPI* box)(HWND, LPCWSTR, LPCWSTR, UINT), void (*callBack)());
  ~Platform();

  void Meet(HMODULE module);
  // The objects that are alive, without the log and the text loader, which the library keeps for good.
  static long Living() noexcept;

 private:
  void* box_;
  std::list<ImportHook> hooks_;
};

// The packages of a message that can be sent.
Dictionary Package();
Dictionary Template();
Dictionary FieldInfo();
Dictionary Bill();

}  // namespace tavio::test::wild
