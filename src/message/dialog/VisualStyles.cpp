#include "message/dialog/VisualStyles.h"

#include "foundation/values/OwnModule.h"

namespace tavio {
namespace {

HANDLE OwnContext() noexcept {
  ACTCTXW context = {};
  context.cbSize = sizeof context;
  context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  context.hModule = OwnModule();
  context.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
  return CreateActCtxW(&context);
}

}  // namespace

VisualStyles::VisualStyles() noexcept
    : context_(OwnContext()), active_(context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_)) {}

VisualStyles::~VisualStyles() {
  if (active_) DeactivateActCtx(0, cookie_);
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

}  // namespace tavio
