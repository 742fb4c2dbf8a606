#include "addin/win32/host_entry.h"

#include "ui/win32/native_window.h"

namespace scrivo {
namespace {

// The library's manifest as a context that can be made the active one.
class ControlsContext {
 public:
  ControlsContext() {
    ACTCTXA request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = OwnModule();
    request.lpResourceName = reinterpret_cast<LPCSTR>(ISOLATIONAWARE_MANIFEST_RESOURCE_ID);
    handle_ = CreateActCtxA(&request);
  }
  ~ControlsContext() {
    if (handle_ != INVALID_HANDLE_VALUE) ReleaseActCtx(handle_);
  }
  ControlsContext(const ControlsContext&) = delete;
  ControlsContext& operator=(const ControlsContext&) = delete;

  // False in a program without such a manifest: its own controls do.
  bool Activate(ULONG_PTR* cookie) const {
    return handle_ != INVALID_HANDLE_VALUE && ActivateActCtx(handle_, cookie);
  }

 private:
  HANDLE handle_;
};

}  // namespace

OwnControls::OwnControls() {
  static const ControlsContext context;
  is_active_ = context.Activate(&cookie_);
}

OwnControls::~OwnControls() {
  if (is_active_) DeactivateActCtx(0, cookie_);
}

}  // namespace scrivo
