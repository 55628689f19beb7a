#include "ulmo/secure_module_handle.h"

namespace Ulmo {

bool SecureModuleHandle::Open(std::u16string_view fileName)
{
    GiveBack();
    returnable_ = false;
    path_ = fileName;
    handle_ = Platform::LoadModule(path_);
    return handle_ != nullptr;
}

// A library that Open has loaded stays in the process for good, deliberately: another thread may be inside it, and its
// own threads and hooks would not survive.
void SecureModuleHandle::GiveBack()
{
    if (!path_.empty() && !returnable_) return;
    if (handle_) Platform::UnloadModule(handle_);
    handle_ = nullptr;
}

}  // namespace Ulmo
