// Holds a library that was loaded on demand.
#pragma once

#include <string>
#include <string_view>

#include "platform/module.h"

namespace Ulmo {

// Not for several threads at once.
class SecureModuleHandle {
public:
    SecureModuleHandle() = default;
    SecureModuleHandle(const SecureModuleHandle&) = delete;
    SecureModuleHandle& operator=(const SecureModuleHandle&) = delete;

    // Gives an earlier library back where it may be, and loads one by its file name. False when that fails.
    bool Open(std::u16string_view fileName);
    void GiveBack();

    void* Find(const char* function) const { return Platform::FindFunction(handle_, function); }

protected:
    ~SecureModuleHandle() = default;

private:
    std::u16string path_;
    Platform::ModuleHandle handle_ = nullptr;
    bool returnable_ = true;
};

}  // namespace Ulmo
