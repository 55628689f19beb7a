#include "platform/host_files.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <memory>

namespace Platform {

namespace {

constexpr std::size_t kLongestPath = 1024;

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool Same(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Lower(x) == Lower(y); });
}

bool Fits(std::string_view name, std::string_view begin, std::string_view end)
{
    return name.size() >= begin.size() + end.size() && Same(name.substr(0, begin.size()), begin) &&
           Same(name.substr(name.size() - end.size()), end);
}

// Follows links: a link to a file is as good as the file.
bool IsOrdinary(int folder, const char* name)
{
    struct stat status;
    return fstatat(folder, name, &status, 0) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

bool GetHostFolder(std::filesystem::path& folder)
{
    char path[kLongestPath];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    if (length < 0) return false;
    if (static_cast<std::size_t>(length) == sizeof path) {
        errno = ENAMETOOLONG;
        return false;
    }
    const std::string_view name(path, static_cast<std::size_t>(length));
    folder = name.substr(0, name.rfind('/') + 1);
    return true;
}

bool FindFiles(const std::filesystem::path& folder, std::string_view begin, std::string_view end,
               std::vector<std::filesystem::path>& found)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), closedir);
    if (!listing) return false;
    // Joined as plain text: the operator of paths ends the process when there is no memory.
    std::string prefix = folder.native();
    if (!prefix.ends_with('/')) prefix += '/';
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(listing.get());
        if (!entry) return errno == 0;
        if (Fits(entry->d_name, begin, end) && IsOrdinary(dirfd(listing.get()), entry->d_name)) {
            found.emplace_back(prefix + entry->d_name);
        }
    }
}

}  // namespace Platform
