#include "message/dialog/ConfirmRecipients.h"

#include "foundation/environment/Operation.h"
#include "foundation/packages/Fields.h"
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

void ConfirmRecipients(Dictionary& recipients, const Dictionary& package) noexcept {
  Operation({}, [&] {
    RecipientSelection selection;
    selection.UserDct(recipients);
    if (!selection.InitForm()) return;
    frmMsgUser(selection, TextAt(package, L"FTitle"_key)).Show();
    if (selection.ShowResult()) {
      recipients = selection.UserDct();
    } else {
      Empty(recipients);
    }
  });
}

}  // namespace tavio
