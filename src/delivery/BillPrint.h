#pragma once

#include "foundation/packages/Component.h"

namespace tavio {

// A bill that is printed for a mail.
struct PrintedBill {
  Component dataService;      // the host's
  Dictionary objectTemplate;  // of the business object, with its name per language
  Dictionary tableInfo;
  std::int32_t billId;
};

// The path of the printed bill. A bill that cannot be printed is no reason to keep the mail back: the path is empty.
Text PrintBill(const PrintedBill& bill) noexcept;

}  // namespace tavio
