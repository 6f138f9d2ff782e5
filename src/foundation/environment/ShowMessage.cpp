#include "foundation/environment/ShowMessage.h"

#include "foundation/environment/ResText.h"

namespace tavio {

std::int32_t ShowMessage(TextView text, std::int32_t style, TextView title) {
  const Text shownTitle = title == kTitle ? LoadResText(kTitle) : Text(title);
  const HWND owner = GetActiveWindow();
  const UINT modality = owner ? 0 : MB_TASKMODAL;
  return MessageBoxW(owner, Text(text).c_str(), shownTitle.c_str(), static_cast<UINT>(style) | modality);
}

void Warn(TextView text) { ShowMessage(LoadResText(text), kWarning, kTitle); }

Text Describe(const Error& error) { return error.Description(LoadResText(error.SystemText())); }

void ReportFailure(TextView label, const Error& error) {
  const Text firstLine = label.empty() ? Text() : Text(label) + L"\r\n";
  ShowMessage(firstLine + Describe(error), kWarning, kTitle);
}

}  // namespace tavio
