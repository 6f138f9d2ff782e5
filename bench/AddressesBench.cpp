#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

#include "bench/Bench.h"
#include "bench/Roads.h"
#include "delivery/AddressList.h"
#include "foundation/values/Text.h"

namespace tavio::bench {
namespace {

std::vector<Text> Addresses(std::int32_t count) {
  std::vector<Text> addresses;
  for (std::int32_t i = 0; i < count; ++i) {
    addresses.push_back(L"User" + std::to_wstring(10000 + i) + L"@mail.example.com");
  }
  return addresses;
}

Text Join(const std::vector<Text>& addresses) {
  AddressList list(L';');
  for (const auto& address : addresses) list.Add(address, ToUpper(address));
  return list.Joined();
}

// The same addresses, each of them once; whether one is a part of another is not asked.
Text JoinBySet(const std::vector<Text>& addresses) {
  std::unordered_set<Text> seen;
  Text joined;
  for (const auto& address : addresses) {
    if (!seen.insert(ToUpper(address)).second) continue;
    if (!joined.empty()) joined += L';';
    joined += address;
  }
  return joined;
}

}  // namespace

void MeasureAddresses() {
  const auto few = Addresses(1000), many = Addresses(10000);
  if (Join(many) != JoinBySet(many)) throw std::logic_error("addresses were lost");
  const double joining = Seconds([&] { Join(many); });
  PrintRatio("Joining 10,000 addresses / joining them by a set", joining, Seconds([&] { JoinBySet(many); }), 10);
  PrintRatio("Joining 10,000 addresses / 1,000", joining, Seconds([&] { Join(few); }), 12);
}

}  // namespace tavio::bench
