#include "platform/host_files.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "platform/module.h"
#include "platform/system_error.h"

namespace {

ssize_t lengthOfLink = 0;  // 0: what the system says

}  // namespace

// In place of the C library's, for this whole program. Under a name of its own, as headers may give that one a body.
extern "C" ssize_t ReadLink(const char* name, char* buffer, std::size_t size) __asm__("readlink");
ssize_t ReadLink(const char* name, char* buffer, std::size_t size)
{
    static const auto original = reinterpret_cast<decltype(&ReadLink)>(dlsym(RTLD_NEXT, "readlink"));
    if (lengthOfLink == 0) return original(name, buffer, size);
    errno = ENOENT;
    return lengthOfLink;
}

namespace {

TEST(PosixHostFiles, AProgramThatIsNotKnownHasNoFolder)
{
    for (const ssize_t length : {-1, 1024}) {
        std::filesystem::path folder;
        lengthOfLink = length;
        EXPECT_FALSE(Platform::GetHostFolder(folder));
        EXPECT_FALSE(Platform::StandsBesideExecutable(u"/dev/null"));
        EXPECT_EQ(Platform::LastError(), static_cast<std::uint32_t>(length < 0 ? ENOENT : ENAMETOOLONG));
    }
    lengthOfLink = 0;
}

}  // namespace
