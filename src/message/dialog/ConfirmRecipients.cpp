#include "foundation/environment/Operation.h"
#include "message/Message.h"
#include "message/dialog/frmMsgUser.h"

namespace tavio {
namespace {

void Empty(const Dictionary& recipients) {
  for (std::int32_t left = recipients.Count(); left > 0; --left) {
    const Text last = recipients.Name(left);
    recipients.Remove(Key(TextView(last)));
  }
}

}  // namespace

// Failures are silent: the recipients stay as they are, and sending goes on.
void Message::ConfirmRecipients(Dictionary& recipients) const {
  Operation({}, [&] {
    RecipientSelection selection;
    selection.UserDct(recipients);
    if (!selection.InitForm()) return;
    frmMsgUser(selection, message_.GetValue(L"FTitle"_key)->ToText()).Show();
    if (selection.ShowResult()) {
      recipients = selection.UserDct();
    } else {
      Empty(recipients);
    }
  });
}

}  // namespace tavio
