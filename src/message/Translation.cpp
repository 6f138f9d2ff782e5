#include "message/Translation.h"

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

class ToCaptions {
 public:
  explicit ToCaptions(const Dictionary& variables) : variables_(variables) {}

  void operator()(TextView name, Text& result) {
    const auto variable = variables_.Find(key_.Borrow(name));
    if (!variable) return AppendBracketed(name, result);
    const Dictionary entry(**variable);
    const auto caption = entry.Find(L"FCaption"_key);
    if (!caption) return AppendBracketed(name, result);
    result += L'[';
    (*caption)->AppendTo(result);
    result += L']';
  }

 private:
  const Dictionary& variables_;
  KeyBuffer key_;
};

class ToValues {
 public:
  ToValues(const Dictionary& variables, const Dictionary& group) : variables_(variables), group_(group) {
    const auto code = group_ ? group_.Find(L"FCode"_key) : std::nullopt;
    groupOnly_ = code && (*code)->OrEmpty().EqualsText(L"mnuEditUse");
  }

  void operator()(TextView name, Text& result) {
    const Key key = key_.Borrow(name);
    const auto variable = variables_.Find(key);
    if (!variable) return AppendBracketed(name, result);
    const Dictionary entry(**variable);
    if (!groupOnly_ && AppendStored(entry, L"FValue"_key, result)) return;
    // With "mnuEditUse" the group's values are the only ones; otherwise they fill what the bill left open.
    if (group_ && AppendStored(group_, key, result)) return;
    AppendBracketed(name, result);
  }

 private:
  // A field may be there and hold nothing: that is a value too.
  static bool AppendStored(const Dictionary& record, const Key& key, Text& result) {
    const auto stored = record.Find(key);
    if (!stored) return false;
    (*stored)->AppendTo(result);
    return true;
  }

  const Dictionary& variables_;
  const Dictionary& group_;
  bool groupOnly_ = false;
  KeyBuffer key_;
};

// Walks the variables as far as the captions asked for need it, and remembers the first variable of each caption.
class ToNames {
 public:
  explicit ToNames(const Dictionary& variables) : variables_(variables), count_(variables.Count()) {}

  void operator()(TextView caption, Text& result) {
    const auto* name = NameOf(ToUpper(caption));
    AppendBracketed(name ? *name : caption, result);
  }

 private:
  const Text* NameOf(const Text& caption) {
    const auto known = names_.find(caption);
    if (known != names_.end()) return &known->second;
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

Text Translated(TextView text, const TranslationFlags& flags, const Dictionary& variables, const Dictionary& group) {
  if (!variables || variables.Count() == 0 || text.find(L'[') == TextView::npos) return Text(text);
  if (flags.name) return RewriteBrackets(text, ToNames(variables));
  if (flags.caption) return RewriteBrackets(text, ToCaptions(variables));
  return RewriteBrackets(text, ToValues(variables, group));
}

}  // namespace

Text Translate(TextView text, TranslationFlags& flags, const Dictionary& variables, const Dictionary& group) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.Message.TransMessage 翻译消息",
                           .report = L"TavioClassBillAction.Message : TransMessage"};
  return Operation<Text>(kLabels, [&](Text& result) {
    Settle(flags);
    result = Translated(text, flags, variables, group);
  });
}

Text TranslateToValues(TextView text, const Dictionary& variables, const Dictionary& group) noexcept {
  TranslationFlags flags{.value = true};
  return Translate(text, flags, variables, group);
}

}  // namespace tavio
