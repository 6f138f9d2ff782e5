#include "foundation/Error.h"
#include "message/Message.h"

namespace tavio {

void Message::ConfirmRecipients(Dictionary&) const {
  throw Error(E_NOTIMPL, L"TavioClassBillAction.Message.SendMessage", L"此功能尚未提供");
}

}  // namespace tavio
