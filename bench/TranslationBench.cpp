#include <string>
#include <unordered_map>

#include "bench/Bench.h"
#include "bench/Roads.h"
#include "message/Message.h"

namespace tavio::bench {
namespace {

constexpr int kNames = 2000;
constexpr std::size_t kTextUnits = 45000;

Text NameOf(int i) { return L"FField" + std::to_wstring(1000 + i); }
Text ValueOf(int i) { return L"value " + std::to_wstring(i); }

// Every known name once, with filler up to the wanted length, `times` over.
Text TemplateText(int times) {
  Text once;
  for (int i = 0; i < kNames; ++i) once += L"[" + NameOf(i) + L"]" + Text(i % 10 + 4, L'文');
  once.resize(kTextUnits, L'。');
  Text text;
  for (int i = 0; i < times; ++i) text += once;
  return text;
}

Message MessageWithVariables() {
  Message message;
  message.ClassType(Dictionary::New());
  message.TableInfo(Dictionary::New());
  for (int i = 0; i < kNames; ++i) {
    const auto variable = Dictionary::New();
    variable.Set(L"FName"_key, Value(TextView(NameOf(i))));
    variable.Set(L"FCaption"_key, Value(TextView(NameOf(i))));
    variable.Set(L"FValue"_key, Value(TextView(ValueOf(i))));
    message.AddVariable(variable);
  }
  return message;
}

std::u16string Plain(const std::u16string& text, const std::unordered_map<std::u16string, std::u16string>& values) {
  std::u16string result;
  std::size_t plain = 0;
  for (;;) {
    const auto open = text.find(u'[', plain);
    const auto close = open == text.npos ? open : text.find(u']', open);
    if (close == text.npos) break;
    result.append(text, plain, open - plain);
    const auto found = values.find(text.substr(open + 1, close - open - 1));
    if (found != values.end()) result += found->second;
    plain = close + 1;
  }
  return result.append(text, plain);
}

std::u16string Utf16(const Text& text) { return std::u16string(text.begin(), text.end()); }

}  // namespace

void MeasureTranslation() {
  auto message = MessageWithVariables();
  std::unordered_map<std::u16string, std::u16string> values;
  for (int i = 0; i < kNames; ++i) values[Utf16(NameOf(i))] = Utf16(ValueOf(i));

  const auto translate = [&](const Text& text) {
    return Seconds([&] {
      bool caption = false, value = true, name = false;
      message.TransMessage(text, caption, value, name);
    });
  };
  const Text once = TemplateText(1), tenfold = TemplateText(10);
  const auto plainText = Utf16(once);
  const double plain = Seconds([&] { Plain(plainText, values); });
  const double ours = translate(once);
  PrintRatio("TransMessage, 45,000 characters, 2,000 names / plain loop", ours, plain, 4);
  PrintRatio("TransMessage, ten times the text", translate(tenfold), ours, 12);
}

}  // namespace tavio::bench
