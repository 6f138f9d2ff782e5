#pragma once

#include <vector>

#include "foundation/packages/Dictionary.h"

namespace tavio {

// What the user is asked before a system message is sent: who of the intended recipients gets it, or whether nobody
// does. The recipient dialog only displays this. Every member that reads packages raises Error.
class RecipientSelection {
 public:
  struct Row {
    Text name;
    Text key;  // of the recipient's entry, the user's ID
    bool ticked = true;
  };

  // Keeps a copy of the list; its entries stay the caller's own.
  void UserDct(const Dictionary& users) { users_ = users.Clone(); }
  // Lists every recipient whose entry is a package, by its FName, and answers whether there is one. Names that are
  // missing are taken from the platform into the entries; who stays without is listed as "Unknown".
  bool InitForm();

  // In the order of the list.
  const std::vector<Row>& Rows() const noexcept { return rows_; }
  void Tick(std::size_t row, bool ticked) { rows_.at(row).ticked = ticked; }
  // The answer. Without one nobody gets the message.
  void Send() noexcept { showResult_ = true; }
  bool ShowResult() const noexcept { return showResult_; }
  // The copy of the list itself, without the recipients that are not ticked. What is not listed stays in it.
  const Dictionary& UserDct() const;

 private:
  void LookUpNames();

  Dictionary users_;
  std::vector<Row> rows_;
  bool showResult_ = false;
};

// The caption of the window: its own text, and behind it the title of the message if there is one.
inline Text RecipientCaption(TextView own, TextView title) {
  return title.empty() ? Text(own) : Text(own) + L" - " + Text(title);
}

}  // namespace tavio
