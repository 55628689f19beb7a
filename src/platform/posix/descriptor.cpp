#include "platform/posix/descriptor.h"

#include <unistd.h>

namespace Platform {

bool WriteWhole(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t piece = Uninterrupted([&] { return write(descriptor, bytes.data(), bytes.size()); });
        if (piece < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(piece));
    }
    return true;
}

}  // namespace Platform
