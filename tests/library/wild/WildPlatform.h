#pragma once

#include <list>
#include <random>

#include "companion/boxes/ImportPatch.h"
#include "tests/support/Platform.h"

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

// The library keeps its log and its texts for good.
template <class Component>
class Kept final : public Component {
 public:
  ComPtr<IDispatch> New() override { return kept_; }

 private:
  ComPtr<IDispatch> kept_ = Component::New();
};

// The platform, of which each touch may go wrong; it answers the boxes and dialogs of a module too.
class WildPlatform final : public Breaker {
 public:
  static constexpr long kKept = 2;  // objects

  // `box` answers a box; `callBack` is called wherever host code could run.
  WildPlatform(HMODULE module, int(WINAPI* box)(HWND, LPCWSTR, LPCWSTR, UINT), void (*callBack)());
  void Forget();

  bool Creates(const std::wstring& object) override;
  bool Finds(const std::wstring& object, const std::wstring& member) override;
  Value Calls(const std::wstring& object, const std::wstring& member, bool assigns, Arguments& arguments,
              const LateBound::Method& real) override;

 private:
  Kept<FakeTexts> texts_;
  Kept<FakeLog> log_;
  FakeProps props_;
  Platform platform_;
  std::list<companion::ImportPatch> hooks_;
};

// The packages of a message that can be sent.
Dictionary Package();
Dictionary Template();
Dictionary FieldInfo();
Dictionary Bill();

}  // namespace tavio::test::wild
