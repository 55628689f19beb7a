#include "platform/host_files.h"

#include "platform/windows/windows_api.h"

namespace Platform {

namespace {

constexpr DWORD kLongestPath = 1024;
constexpr DWORD kSkipped = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_OFFLINE;

class Search {
public:
    Search(const wchar_t* pattern, WIN32_FIND_DATAW& entry) : handle_(FindFirstFileW(pattern, &entry)) {}
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;
    ~Search()
    {
        if (Found()) FindClose(handle_);
    }

    bool Found() const { return handle_ != INVALID_HANDLE_VALUE; }
    bool Next(WIN32_FIND_DATAW& entry) { return FindNextFileW(handle_, &entry) != 0; }

private:
    HANDLE handle_;
};

}  // namespace

bool GetHostFolder(std::filesystem::path& folder)
{
    wchar_t path[kLongestPath];
    const DWORD length = GetModuleFileNameW(nullptr, path, kLongestPath);
    if (length == 0) return false;
    if (length == kLongestPath) {  // cut; an old system sets no error then
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return false;
    }
    const std::wstring_view name(path, length);
    folder = name.substr(0, name.find_last_of(L"\\/") + 1);
    return true;
}

bool FindFiles(const std::filesystem::path& folder, std::string_view begin, std::string_view end,
               std::vector<std::filesystem::path>& found)
{
    WIN32_FIND_DATAW entry;
    const std::filesystem::path pattern = folder / std::string(begin).append("*").append(end);
    Search search(pattern.c_str(), entry);
    if (!search.Found()) return GetLastError() == ERROR_FILE_NOT_FOUND;
    do {
        if (!(entry.dwFileAttributes & kSkipped)) found.push_back(folder / entry.cFileName);
    } while (search.Next(entry));
    return GetLastError() == ERROR_NO_MORE_FILES;
}

}  // namespace Platform
