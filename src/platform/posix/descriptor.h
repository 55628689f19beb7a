// Calls on file descriptors, for every file here that has one.
#pragma once

#include <cerrno>
#include <string_view>

#include <sys/types.h>

namespace Platform {

// Runs a system call again when a signal has interrupted it.
template <class Call>
ssize_t Uninterrupted(Call call)
{
    ssize_t result = 0;
    do {
        result = call();
    } while (result == -1 && errno == EINTR);
    return result;
}

// Writes all bytes, with one call when the system takes them at once. False when it refuses some; the reason is in
// errno.
bool WriteWhole(int descriptor, std::string_view bytes);

}  // namespace Platform
