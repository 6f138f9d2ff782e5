#include <string>
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

void Join(const std::vector<Text>& addresses) {
  AddressList list(L';');
  for (const auto& address : addresses) list.Add(address, ToUpper(address));
}

// What the rule cannot do without: each address is searched in the text of all before it.
void SearchEach(const std::vector<Text>& addresses, TextView joined) {
  std::size_t before = 0;
  for (const auto& address : addresses) {
    const volatile bool found = joined.substr(0, before).find(address) != TextView::npos;
    static_cast<void>(found);
    before += address.size() + 1;
  }
}

}  // namespace

void MeasureAddresses() {
  const auto few = Addresses(1000), many = Addresses(10000);
  Text joined;
  for (const auto& address : many) joined += address + L';';
  const double joining = Seconds([&] { Join(many); });
  PrintRatio("Joining 10,000 addresses / searching each in the text before it", joining,
             Seconds([&] { SearchEach(many, joined); }), 2);
  PrintRatio("Joining 10,000 addresses / 1,000", joining, Seconds([&] { Join(few); }), 0);
}

}  // namespace tavio::bench
