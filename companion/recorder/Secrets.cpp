#include "companion/recorder/Secrets.h"

#include <algorithm>

#include "companion/recorder/PlatformCalls.h"
#include "foundation/values/MParse.h"

namespace tavio::companion {
namespace {

constexpr wchar_t kMask[] = L"***";
// A shorter one is masked only if it is the whole text: it would be found in half of all words.
constexpr std::size_t kLeastInside = 4;

constexpr TextView kSecretNames[] = {L"PASSWORD", L"PASSWD", L"PWD", L"CONNECTSTRING", L"CONNECTIONSTRING"};

bool IsSecretName(TextView name) {
  const Text upper = ToUpper(name);
  return std::any_of(std::begin(kSecretNames), std::end(kSecretNames),
                     [&](TextView secret) { return upper.find(secret) != Text::npos; });
}

// Arguments that are known by their place.
struct SecretArgument {
  const wchar_t* progId;
  const wchar_t* member;
  std::size_t index;
};
constexpr SecretArgument kSecretArguments[] = {
    {L"TavioAppCommand.Command", L"SendMessage", 0},
    {L"TavioMBOSMultiCheck.BillInfo", L"GetUsers", 0},
};

bool IsSecretArgument(const Call& call, std::size_t index) {
  return std::any_of(std::begin(kSecretArguments), std::end(kSecretArguments), [&](const SecretArgument& row) {
    return row.index == index && TextView(row.progId) == call.progId && EqualsName(call.member, row.member);
  });
}

}  // namespace

Secrets::Secrets(const std::deque<Call>& calls) {
  for (const auto& call : calls) {
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
      const bool known = IsSecretArgument(call, i) || call.kind == Call::Kind::kAssign;
      Learn(call.arguments[i], IsSecretArgument(call, i) ? TextView(L"PASSWORD") : known ? call.member : TextView());
    }
    Learn(call.answer, {});
  }
  // The longest first, so that none is cut by a shorter one within it.
  std::sort(values_.begin(), values_.end(), [](const Text& a, const Text& b) { return a.size() > b.size(); });
}

void Secrets::Learn(const Snapshot& snapshot, TextView name) {
  if (snapshot.value.IsText()) LearnFrom(ViewOf(snapshot.value.Raw().bstrVal), name);
  for (const auto& entry : snapshot.entries) Learn(entry.value, entry.key);
}

void Secrets::LearnFrom(TextView text, TextView name) {
  if (IsSecretName(name)) Keep(text);
  if (text.find(L'=') == TextView::npos) return;
  for (const auto& [key, value] : ParsePairs(text)) {
    if (IsSecretName(key)) Keep(value);
    if (value.find(L'=') != TextView::npos) LearnFrom(value, {});
  }
}

void Secrets::Keep(TextView secret) {
  if (!secret.empty() && std::find(values_.begin(), values_.end(), secret) == values_.end()) {
    values_.emplace_back(secret);
  }
}

Text Secrets::Masked(TextView text) const {
  Text masked(text);
  for (const auto& secret : values_) {
    if (masked == secret) return kMask;
    if (secret.size() < kLeastInside) continue;
    for (auto at = masked.find(secret); at != Text::npos; at = masked.find(secret, at + std::size(kMask) - 1)) {
      masked.replace(at, secret.size(), kMask);
    }
  }
  return masked;
}

}  // namespace tavio::companion
