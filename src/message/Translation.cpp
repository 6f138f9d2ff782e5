#include "message/Translation.h"

#include <optional>
#include <unordered_map>

#include "foundation/environment/Operation.h"
#include "message/MessageTemplate.h"

namespace tavio {
namespace {

Error Refused(TextView reason) {
  return Error::System(kOwnError, reason, {}, L"TavioClassBillAction.Message.TransMessage");
}

// All three together are refused, while two are settled by precedence: hosts pass two and count on it.
void Settle(TranslationFlags& flags) {
  if (flags.caption && flags.value && flags.name) throw Refused(L"不能同时翻译标题和内容!");
  if (!flags.caption && !flags.value && !flags.name) throw Refused(L"未指定需要进行何种翻译!");
  if (flags.name) flags.caption = flags.value = false;
  if (flags.caption) flags.value = false;
}

// A field may be there and hold nothing: that is a value too. Objects are hosts', and may do anything when they are asked.
Text TextOf(const Value& value) {
  Text text;
  value.AppendTo(text);
  return text;
}

class ToCaptions {
 public:
  explicit ToCaptions(const Dictionary& variables) : variables_(variables) {}

  void operator()(Rewriting& text) {
    const auto seen = variables_.PeekTextUnder(text.Name(), L"FCaption"_key);
    if (!seen.isCertain) return Ask(text);
    if (seen.text) text.LendWithin(*seen.text);
  }

 private:
  void Ask(Rewriting& text) {
    text.Settle();
    const Key name = key_.Borrow(text.Name());
    const auto variable = variables_.Find(name);
    if (!variable) return;
    const Dictionary entry(**variable);
    if (const auto caption = entry.Find(L"FCaption"_key)) text.Write(L'[' + TextOf(**caption) + L']');
  }

  const Dictionary& variables_;
  KeyBuffer key_;
};

class ToValues {
 public:
  ToValues(const Dictionary& variables, const Dictionary& group) : variables_(variables), group_(group) {}

  void operator()(Rewriting& text) {
    if (group_ && groupOnly_.value_or(true)) return Ask(text);
    const auto seen = variables_.PeekTextUnder(text.Name(), L"FValue"_key);
    if (!seen.isCertain || (!seen.text && group_)) return Ask(text);
    if (seen.text) text.Lend(*seen.text);
  }

 private:
  void Ask(Rewriting& text) {
    text.Settle();
    const Key name = key_.Borrow(text.Name());
    const auto variable = variables_.Find(name);
    if (!variable) return;
    const Dictionary entry(**variable);
    if (entry.Lookup(L"FValue"_key) && !IsGroupOnly()) return text.Write(TextOf(*entry.Get(L"FValue"_key)));
    const auto value = group_ ? group_.Find(name) : std::nullopt;
    if (value) text.Write(TextOf(**value));
  }
  // With "mnuEditUse" the group's values are the only ones; otherwise they fill what the bill left open. Asked when the
  // first value is there, so that a text without any needs no group.
  bool IsGroupOnly() {
    if (!group_) return false;
    if (!groupOnly_) {
      const auto code = group_.Find(L"FCode"_key);
      groupOnly_ = code && (*code)->OrEmpty().EqualsText(L"mnuEditUse");
    }
    return *groupOnly_;
  }

  const Dictionary& variables_;
  const Dictionary& group_;
  std::optional<bool> groupOnly_;
  KeyBuffer key_;
};

// Walks the variables as far as the captions asked for need it, and remembers the first variable of each caption.
class ToNames {
 public:
  explicit ToNames(const Dictionary& variables) : variables_(variables), count_(variables.Count()) {}

  void operator()(Rewriting& text) {
    const auto caption = ToUpper(text.Name());
    const auto known = names_.find(caption);
    if (known == names_.end() && walked_ < count_) text.Settle();
    const auto* name = known == names_.end() ? Seek(caption) : &known->second;
    if (name) text.LendWithin(*name);
  }

 private:
  const Text* Seek(const Text& caption) {
    while (walked_ < count_) {
      const Entry variable(variables_, ++walked_);
      const Text name(variable.KeyView());
      const auto held = variable.Record().Find(L"FCaption"_key);
      if (!held) continue;
      const auto [entry, isNew] = names_.try_emplace(ToUpper((*held)->OrEmpty().ToText()), name);
      if (isNew && entry->first == caption) return &entry->second;
    }
    return nullptr;
  }

  EntryReader variables_;
  std::int32_t count_;
  std::int32_t walked_ = 0;
  std::unordered_map<Text, Text> names_;
};

template <class Translator>
BString Rewritten(TextView text, Translator&& translate) {
  Rewriting rewriting(text);
  while (rewriting.NextName()) translate(rewriting);
  auto result = BString::OfSize(rewriting.Size());
  rewriting.CopyTo(result.Get());
  return result;
}

BString Translated(TextView text, const TranslationFlags& flags, const Dictionary& variables, const Dictionary& group) {
  if (!variables || variables.Count() == 0 || text.find(L'[') == TextView::npos) return BString(text);
  if (flags.name) return Rewritten(text, ToNames(variables));
  if (flags.caption) return Rewritten(text, ToCaptions(variables));
  return Rewritten(text, ToValues(variables, group));
}

}  // namespace

BString Translate(TextView text, TranslationFlags& flags, const Dictionary& variables,
                  const Dictionary& group) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.TransMessage 翻译消息",
                           .report = L"TavioClassBillAction.Message : TransMessage"};
  return Operation<BString>(kLabels, [&](BString& result) {
    Settle(flags);
    result = Translated(text, flags, variables, group);
  });
}

BString TranslateToValues(TextView text, const Dictionary& variables, const Dictionary& group) noexcept {
  TranslationFlags flags{.value = true};
  return Translate(text, flags, variables, group);
}

}  // namespace tavio
