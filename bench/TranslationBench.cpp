#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>

#include "bench/Bench.h"
#include "bench/Library.h"
#include "foundation/values/InvokeByName.h"
#include "foundation/values/Text.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kVariables = 2000;
constexpr std::int32_t kTextUnits = 45000;

Text NameOf(std::int32_t i) { return L"FField" + std::to_wstring(1000 + i); }
Text CaptionOf(std::int32_t i) { return L"Caption of field " + std::to_wstring(1000 + i); }
Text ValueOf(std::int32_t i) { return L"value " + std::to_wstring(i); }

enum class To { kValues, kCaptions, kNames };

// What stands in brackets, and what it becomes.
using Plain = std::unordered_map<std::wstring, std::wstring>;

struct Texts {
  ComPtr<_Message> message;
  Text once, tenfold;
  Plain plain;
  // Looked up by views into the text.
  std::unordered_map<std::wstring_view, std::wstring_view> replacements;
};

Plain PlainOf(To to, std::int32_t count) {
  Plain plain;
  for (std::int32_t i = 0; i < count; ++i) {
    if (to == To::kValues) plain[NameOf(i)] = ValueOf(i);
    if (to == To::kCaptions) plain[NameOf(i)] = L"[" + CaptionOf(i) + L"]";
    if (to == To::kNames) plain[ToUpper(CaptionOf(i))] = L"[" + NameOf(i) + L"]";
  }
  return plain;
}

// Every known name once, with filler up to the wanted length; and ten times that.
Texts TextsFor(const Bench& bench, To to) {
  const auto count = bench.Size(kVariables);
  Texts texts{NewBoundMessage(), {}, {}, PlainOf(to, count), {}};
  for (std::int32_t i = 0; i < count; ++i) AddVariable(texts.message, NameOf(i), CaptionOf(i), ValueOf(i));
  for (std::int32_t i = 0; i < count; ++i) {
    const auto filler = static_cast<std::size_t>(i % 10 + 4);
    texts.once += L"[" + (to == To::kNames ? CaptionOf(i) : NameOf(i)) + L"]" + Text(filler, L'文');
  }
  texts.once.resize(std::max(texts.once.size(), static_cast<std::size_t>(bench.Size(kTextUnits))), L'。');
  for (int i = 0; i < 10; ++i) texts.tenfold += texts.once;
  for (const auto& [name, replacement] : texts.plain) texts.replacements[name] = replacement;
  return texts;
}

struct Result {
  Value value;

  bool operator==(const std::wstring& other) const { return ViewOf(value.Raw().bstrVal) == other; }
};

// As a script calls it.
Result Translate(const Texts& texts, const BString& text, To to) {
  VARIANT arguments[] = {
      Value(to == To::kNames).Raw(), Value(to == To::kValues).Raw(), Value(to == To::kCaptions).Raw(), {}};
  arguments[3].vt = VT_BSTR;
  arguments[3].bstrVal = text.Get();
  return {InvokeByName(texts.message.Get(), L"TransMessage", kCallOrRead, arguments)};
}

// As a host that is bound early calls it.
BString TranslateEarly(const Texts& texts, const BString& text) {
  VARIANT_BOOL value = VARIANT_TRUE, other = VARIANT_FALSE;
  BString result;
  Check(texts.message->TransMessage(text.Get(), &other, &value, &other, result.Receive()));
  return result;
}

std::wstring TranslatePlainly(const Texts& texts, std::wstring_view text, To to) {
  std::wstring result, upper;
  result.reserve(text.size() + text.size() / 2);
  std::size_t plain = 0;
  for (;;) {
    const auto open = text.find(L'[', plain);
    const auto close = open == text.npos ? open : text.find(L']', open);
    if (close == text.npos) break;
    result += text.substr(plain, open - plain);
    auto name = text.substr(open + 1, close - open - 1);
    if (to == To::kNames) {
      upper.assign(name);
      CharUpperBuffW(upper.data(), static_cast<DWORD>(upper.size()));
      name = upper;
    }
    const auto found = texts.replacements.find(name);
    if (found != texts.replacements.end()) result += found->second;
    plain = close + 1;
  }
  return result += text.substr(plain);
}

void CompareOn(Bench& bench, const Work& work, const Texts& texts, const Text& text, To to) {
  const BString given(text);
  bench.Compare(
      work, [&] { return Translate(texts, given, to); }, [&] { return TranslatePlainly(texts, text, to); });
}

void CompareEarly(Bench& bench, const Texts& texts) {
  const BString given(texts.once);
  bench.Compare(
      {"45,000 characters to values, bound early", "plain C++ with a hash map", 1.2},
      [&] { return TranslateEarly(texts, given); }, [&] { return TranslatePlainly(texts, texts.once, To::kValues); });
}

void CompareWithCopy(Bench& bench, const Texts& texts) {
  const BString given(texts.tenfold);
  bench.Time(
      {"450,000 characters to values", "one copy of the text: the limit"},
      [&] { return Translate(texts, given, To::kValues); }, [&] { return BString(texts.tenfold); });
}

}  // namespace

void MeasureTranslation(Bench& bench) {
  bench.Heading("Translation, 2,000 names, late bound");
  const struct {
    To to;
    Work once, tenfold;
  } modes[] = {
      {To::kValues,
       {"45,000 characters to values", "plain C++ with a hash map", 1.2},
       {"450,000 characters to values", "plain C++ with a hash map", 1.3}},
      {To::kCaptions,
       {"45,000 characters to captions", "plain C++ with a hash map"},
       {"450,000 characters to captions", "plain C++ with a hash map"}},
      {To::kNames,
       {"captions to names, once as much", "plain C++ with a hash map that is kept"},
       {"captions to names, ten times as much", "plain C++ with a hash map that is kept"}},
  };
  for (const auto& mode : modes) {
    const auto texts = TextsFor(bench, mode.to);
    CompareOn(bench, mode.once, texts, texts.once, mode.to);
    CompareOn(bench, mode.tenfold, texts, texts.tenfold, mode.to);
    if (mode.to != To::kValues) continue;
    CompareEarly(bench, texts);
    CompareWithCopy(bench, texts);
  }
}

}  // namespace tavio::bench
