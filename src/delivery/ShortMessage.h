#pragma once

#include <cstdint>

#include "foundation/values/Text.h"

namespace tavio {

struct ShortMessage {
  Text numbers;  // joined by ","
  Text content;
  std::int32_t classTypeId;
  std::int32_t billId;
};

// Hands a short message to the platform's gateway. Raises Error if that fails.
void SendShortMessage(const ShortMessage& message);

}  // namespace tavio
