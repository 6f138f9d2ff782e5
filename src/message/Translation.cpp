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

// A field may be there and hold nothing: that is a value too.
bool Lacks(const Dictionary& record, const Key& key, const Value& stored) {
  return stored.IsEmpty() && !record.Lookup(key);
}

class ToCaptions {
 public:
  explicit ToCaptions(const Dictionary& variables) : variables_(variables) {}

  void operator()(TextView name, Text& result) {
    const auto variable = variables_.GetValue(key_.Borrow(name));
    if (variable->IsEmpty()) return AppendBracketed(name, result);
    const Dictionary entry(*variable);
    const auto caption = entry.GetValue(L"FCaption"_key);
    if (Lacks(entry, L"FCaption"_key, *caption)) return AppendBracketed(name, result);
    result += L'[';
    caption->AppendTo(result);
    result += L']';
  }

 private:
  const Dictionary& variables_;
  KeyBuffer key_;
};

class ToValues {
 public:
  ToValues(const Dictionary& variables, const Dictionary& group) : variables_(variables), group_(group) {
    groupOnly_ = group_ && group_.GetValue(L"FCode"_key)->OrEmpty().EqualsText(L"mnuEditUse");
  }

  void operator()(TextView name, Text& result) {
    const Key key = key_.Borrow(name);
    const auto variable = variables_.GetValue(key);
    if (variable->IsEmpty()) return AppendBracketed(name, result);
    const Dictionary entry(*variable);
    if (!groupOnly_ && AppendStored(entry, L"FValue"_key, result)) return;
    // With "mnuEditUse" the group's values are the only ones; otherwise they fill what the bill left open.
    if (group_ && AppendStored(group_, key, result)) return;
    AppendBracketed(name, result);
  }

 private:
  static bool AppendStored(const Dictionary& record, const Key& key, Text& result) {
    const auto stored = record.GetValue(key);
    if (Lacks(record, key, *stored)) return false;
    stored->AppendTo(result);
    return true;
  }

  const Dictionary& variables_;
  const Dictionary& group_;
  bool groupOnly_ = false;
  KeyBuffer key_;
};

// The variable names by upper-cased caption, the first one of each caption.
class ToNames {
 public:
  explicit ToNames(const Dictionary& variables) {
    const auto count = variables.Count();
    for (std::int32_t i = 1; i <= count; ++i) {
      const auto entry = variables.At(i);
      const Dictionary variable(entry.Stored());
      const auto caption = variable.GetValue(L"FCaption"_key);
      if (!caption->IsEmpty()) names_.try_emplace(ToUpper(caption->OrEmpty().ToText()), entry.KeyView());
    }
  }

  void operator()(TextView caption, Text& result) const {
    const auto found = names_.find(ToUpper(caption));
    AppendBracketed(found == names_.end() ? caption : TextView(found->second), result);
  }

 private:
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
