#include "foundation/values/Text.h"

#include <windows.h>

namespace tavio {

Text ToUpper(TextView text) {
  Text upper(text);
  CharUpperBuffW(upper.data(), static_cast<DWORD>(upper.size()));
  return upper;
}

}  // namespace tavio
