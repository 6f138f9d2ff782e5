#pragma once

#include <vector>

#include "delivery/SearchedText.h"

namespace tavio {

// The addresses of a mail, or the numbers of a short message, joined by a separator that has no letter case.
class AddressList {
 public:
  explicit AddressList(Char separator) noexcept : separator_(separator) {}

  // Appends an address. One that occurs anywhere in the list so far, without regard to letter case, is dropped: be it a
  // whole address, a part of one, or (if it holds separators itself) a run of several. Users know lists without such
  // addresses, so the test stays as coarse as it is. An empty address is dropped too.
  // `upper` is the address in upper case, of the same length.
  void Add(TextView address, TextView upper) {
    if (address.empty() || upper_.Contains(upper)) return;
    if (!joined_.empty()) {
      joined_ += separator_;
      upper_.Append({&separator_, 1});
    }
    joined_ += address;
    upper_.Append(upper);
  }

  const Text& Joined() const noexcept { return joined_; }

 private:
  Char separator_;
  Text joined_;
  SearchedText upper_;  // the same list in upper case
};

// The addresses of a joined list, in order; they refer to `joined`. Empty ones are left out.
inline std::vector<TextView> SplitAddresses(TextView joined, Char separator) {
  std::vector<TextView> addresses;
  while (!joined.empty()) {
    const auto end = joined.find(separator);
    const auto address = joined.substr(0, end);
    if (!address.empty()) addresses.push_back(address);
    joined.remove_prefix(end == TextView::npos ? joined.size() : end + 1);
  }
  return addresses;
}

}  // namespace tavio
