#pragma once

#include <deque>

#include "foundation/values/Text.h"

namespace tavio {

// Rewrites a text in which names stand in square brackets. A name reaches from a "[" to the first "]" after it, as it
// stands: untrimmed, and other "[" belong to it. A "[" that is never closed ends the rewriting; the rest of the text stays
// as it is.
//
//   Rewriting rewriting(text);
//   while (rewriting.NextName()) rewriting.Lend(ValueOf(rewriting.Name()));
//
// What is written is lent, as the text itself is, until it is copied out at its full length: a long text costs one
// allocation. Whoever lets others change what was lent calls Settle before.
class Rewriting {
 public:
  explicit Rewriting(TextView text) noexcept : text_(text) {}
  Rewriting(const Rewriting&) = delete;
  Rewriting& operator=(const Rewriting&) = delete;

  // Goes to the next name; one of which nothing more is said stays as it is.
  bool NextName() noexcept {
    open_ = text_.find(Char{'['}, next_);
    close_ = open_ == TextView::npos ? open_ : text_.find(Char{']'}, open_);
    if (close_ == TextView::npos) return false;
    next_ = close_ + 1;
    return true;
  }
  TextView Name() const noexcept { return text_.substr(open_ + 1, close_ - open_ - 1); }

  // What stands for the name, with its brackets or within them.
  void Lend(TextView written) { Replace({open_, next_, written}); }
  void LendWithin(TextView written) { Replace({open_ + 1, close_, written}); }

  // Copies all that is lent.
  void Settle() {
    if (own_.empty()) text_ = own_ = Text(text_);
    const auto before = settled_.size();
    settled_.resize(before + open_ - from_ + growth_);
    CopyFrom(from_, open_, settled_.data() + before);
    Restart(open_);
  }
  // As Lend, of what is gone after the call.
  void Write(TextView written) {
    Settle();
    settled_ += written;
    Restart(next_);
  }

  std::size_t Size() const noexcept { return settled_.size() + text_.size() - from_ + growth_; }
  // `target` has room for Size() characters.
  void CopyTo(Char* target) const noexcept {
    CopyFrom(from_, text_.size(), target + settled_.copy(target, Text::npos));
  }
  Text ToText() const {
    Text text(Size(), Char{});
    CopyTo(text.data());
    return text;
  }

 private:
  struct Replacement {
    std::size_t from, to;
    TextView written;
  };

  void Replace(const Replacement& replacement) {
    replacements_.push_back(replacement);
    growth_ += replacement.written.size() - (replacement.to - replacement.from);
  }
  void CopyFrom(std::size_t from, std::size_t to, Char* target) const noexcept {
    for (const auto& replacement : replacements_) {
      target += text_.substr(from, replacement.from - from).copy(target, TextView::npos);
      target += replacement.written.copy(target, TextView::npos);
      from = replacement.to;
    }
    text_.substr(from, to - from).copy(target, TextView::npos);
  }
  void Restart(std::size_t from) noexcept {
    replacements_.clear();
    growth_ = 0;
    from_ = from;
  }

  TextView text_;
  Text own_;      // the text, once it had to be copied
  Text settled_;  // what the text becomes before `from_`
  std::size_t from_ = 0;
  std::deque<Replacement> replacements_;  // behind `from_`
  std::size_t growth_ = 0;                // by them; less than nothing wraps around, and back when it is added
  std::size_t open_ = 0, close_ = 0;      // the name at hand
  std::size_t next_ = 0;
};

}  // namespace tavio
