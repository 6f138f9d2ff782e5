#include "Input.h"
#include "delivery/AddressList.h"
#include "delivery/MailHeader.h"

namespace tavio::fuzz {
namespace {

Text WrittenLineBreaks(const Text& text) {
  Text html;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool lineEnd = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    html += lineEnd ? u"<br>" : Text(1, text[i]);
    if (lineEnd) ++i;
  }
  return html;
}

Text Upper(Text text) {
  for (auto& unit : text) {
    if (unit >= u'a' && unit <= u'z') unit = static_cast<Char>(unit - 32);
  }
  return text;
}

Text WrittenList(const std::vector<Text>& addresses, Char separator) {
  Text list;
  for (const auto& address : addresses) {
    if (address.empty() || Upper(list).find(Upper(address)) != Text::npos) continue;
    if (!list.empty()) list += separator;
    list += address;
  }
  return list;
}

// Short inputs make long lists that overlap, nest and repeat: after a control character an address goes on with
// characters that stand somewhere before, as many as 2 to its power.
std::vector<Text> Addresses(Input& input) {
  constexpr std::size_t kLongest = 1000;
  std::vector<Text> addresses(1);
  Text all;
  while (!input.AtEnd() && all.size() < kLongest) {
    const Text line = input.Line();
    for (std::size_t i = 0; i < line.size(); ++i) {
      const bool again = line[i] < 10 && i + 1 < line.size() && line[i + 1] < all.size();
      const Text more = again ? all.substr(line[i + 1], std::size_t{1} << line[i]) : Text(1, line[i]);
      if (again) ++i;
      addresses.back() += more;
      all += more;
    }
    addresses.emplace_back();
  }
  return addresses;
}

std::vector<Text> WrittenParts(const Text& joined, Char separator) {
  std::vector<Text> parts(1);
  for (const auto unit : joined) unit == separator ? void(parts.emplace_back()) : parts.back().push_back(unit);
  std::erase(parts, Text());
  return parts;
}

}  // namespace

void CheckMailText(Input input) {
  const auto text = input.Rest();
  Text folded;
  for (const auto unit : text) folded += unit == u'\r' || unit == u'\n' || unit == u'\0' ? u' ' : unit;
  Require(FoldedForHeader(text) == folded && FitsHeader(text) == (folded == text));
  Require(WithHtmlLineBreaks(text) == WrittenLineBreaks(text));
}

void CheckAddressList(Input input) {
  const Char separator = input.Byte() == ';' ? u';' : u',';
  const auto addresses = Addresses(input);
  AddressList list(separator);
  for (const auto& address : addresses) list.Add(address, Upper(address));
  Require(list.Joined() == WrittenList(addresses, separator));
}

void CheckAddressSplitting(Input input) {
  const Char separator = input.Byte();
  const auto joined = input.Rest();
  std::vector<Text> parts;
  for (const auto part : SplitAddresses(joined, separator)) parts.emplace_back(part);
  Require(parts == WrittenParts(joined, separator));
}

}  // namespace tavio::fuzz
