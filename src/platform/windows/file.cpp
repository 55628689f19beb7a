#include "platform/file.h"

#include <algorithm>
#include <utility>

#include "platform/windows/windows_api.h"

namespace Platform {

namespace {

// A call counts its bytes in 32 bits.
constexpr std::size_t kMostPerCall = 1 << 30;

HANDLE AsHandle(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

DWORD PieceOf(std::size_t count)
{
    return static_cast<DWORD>(std::min(count, kMostPerCall));
}

HANDLE OpenFor(const wchar_t* name, File::Use use)
{
    constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_DELETE;
    const bool reads = use == File::Use::Read;
    // The right to append without the right to write makes the system put every write at the end.
    const DWORD access = reads ? GENERIC_READ : FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
    return CreateFileW(name, access, kSharing, nullptr, reads ? OPEN_EXISTING : OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

// Gives the position that it leads to.
bool Seek(std::intptr_t handle, std::int64_t distance, DWORD from, std::int64_t& position)
{
    LARGE_INTEGER wanted{};
    LARGE_INTEGER found{};
    wanted.QuadPart = distance;
    const bool done = SetFilePointerEx(AsHandle(handle), wanted, &found, from) != FALSE;
    position = found.QuadPart;
    return done;
}

}  // namespace

bool File::Open(const std::filesystem::path& name, Use use)
{
    Close();
    handle_ = reinterpret_cast<std::intptr_t>(OpenFor(name.c_str(), use));
    if (!IsOpen()) return false;
    if (GetFileType(AsHandle(handle_)) == FILE_TYPE_DISK) return true;
    Close();
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

void File::Close()
{
    if (!IsOpen()) return;
    // The failure that made the caller close is still to be reported.
    const DWORD kept = GetLastError();
    CloseHandle(AsHandle(std::exchange(handle_, kClosed)));
    SetLastError(kept);
}

bool File::Read(void* buffer, std::size_t count, std::size_t& got)
{
    got = 0;
    while (got < count) {
        DWORD piece = 0;
        if (!ReadFile(AsHandle(handle_), static_cast<char*>(buffer) + got, PieceOf(count - got), &piece, nullptr)) {
            return false;
        }
        if (piece == 0) break;
        got += piece;
    }
    return true;
}

bool File::Write(const void* buffer, std::size_t count)
{
    const char* next = static_cast<const char*>(buffer);
    while (count != 0) {
        DWORD piece = 0;
        if (!WriteFile(AsHandle(handle_), next, PieceOf(count), &piece, nullptr)) return false;
        next += piece;
        count -= piece;
    }
    return true;
}

bool File::GetSize(std::uint64_t& size) const
{
    LARGE_INTEGER found{};
    if (!GetFileSizeEx(AsHandle(handle_), &found)) return false;
    size = static_cast<std::uint64_t>(found.QuadPart);
    return true;
}

bool File::GetPosition(std::uint64_t& position) const
{
    std::int64_t found = 0;
    if (!Seek(handle_, 0, FILE_CURRENT, found)) return false;
    position = static_cast<std::uint64_t>(found);
    return true;
}

// A position of 2^63 and above turns negative, which the system refuses.
bool File::SetPosition(std::uint64_t position)
{
    std::int64_t found = 0;
    return Seek(handle_, static_cast<std::int64_t>(position), FILE_BEGIN, found);
}

std::u16string FileNameText(const std::filesystem::path& name)
{
    return {name.native().begin(), name.native().end()};
}

}  // namespace Platform
