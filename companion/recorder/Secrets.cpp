#include "companion/recorder/Secrets.h"

#include <algorithm>

#include "companion/recorder/PlatformCalls.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/values/Error.h"
#include "foundation/values/MParse.h"

namespace tavio::companion {
namespace {

constexpr wchar_t kMask[] = L"***";
// A shorter one is masked only if it is the whole text, or behind its name: it would be found in half of all words.
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
    Learn(call.writtenBack, {});
    LearnFrom(call.description, {});
  }
  Sort();
}

// The longest first, so that none is cut by a shorter one within it.
void Secrets::Sort() {
  const auto isLonger = [](const Secret& a, const Secret& b) { return a.text.size() > b.text.size(); };
  std::sort(secrets_.begin(), secrets_.end(), isLonger);
}

void Secrets::Learn(const Snapshot& snapshot, TextView name) {
  if (snapshot.value.IsText()) LearnFrom(ViewOf(snapshot.value.Raw().bstrVal), name);
  for (const auto& entry : snapshot.entries) Learn(entry.value, entry.key);
}

void Secrets::LearnFrom(TextView text, TextView name) {
  if (IsSecretName(name)) Keep(text, {});
  if (text.find(L'=') == TextView::npos) return;
  for (const auto& [key, value] : ParsePairs(text)) {
    const auto length = static_cast<std::size_t>(value.data() - key.data()) + value.size();
    if (IsSecretName(key)) Keep(value, TextView(key.data(), length));
    if (value.find(L'=') != TextView::npos) LearnFrom(value, {});
  }
}

void Secrets::Keep(TextView secret, TextView pair) {
  if (secret.empty()) return;
  Keep({Text(secret), kMask});
  if (secret.size() >= kLeastInside || pair.empty()) return;
  Keep({Text(pair), Text(pair.substr(0, pair.size() - secret.size())) + kMask});
}

void Secrets::Keep(Secret secret) {
  const auto is = [&](const Secret& known) { return known.text == secret.text; };
  if (std::none_of(secrets_.begin(), secrets_.end(), is)) secrets_.push_back(std::move(secret));
}

Text Secrets::Masked(TextView text) const {
  Text masked(text);
  for (const auto& [secret, instead] : secrets_) {
    if (masked == secret) return instead;
    if (secret.size() < kLeastInside) continue;
    for (auto at = masked.find(secret); at != Text::npos; at = masked.find(secret, at + instead.size())) {
      masked.replace(at, secret.size(), instead);
    }
  }
  return masked;
}

Text WithoutSecrets(TextView text) {
  Secrets secrets;
  secrets.LearnFrom(text, {});
  try {
    secrets.LearnFrom(GetPropsString(), {});
  } catch (const Error&) {
    // Without shared properties there are no secrets of theirs.
  }
  secrets.Sort();
  return secrets.Masked(text);
}

}  // namespace tavio::companion
