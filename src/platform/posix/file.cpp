#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <utility>

#include "platform/posix/descriptor.h"
#include "platform/text.h"

namespace Platform {

namespace {

static_assert(sizeof(off_t) == 8);

// Does not wait for a pipe that nobody writes; a plain open would, before its type can be checked.
int FlagsFor(File::Use use)
{
    const int flags = use == File::Use::Read ? O_RDONLY : O_WRONLY | O_APPEND | O_CREAT;
    return flags | O_CLOEXEC | O_NONBLOCK;
}

// 0 for a regular file, else the reason to refuse it.
int RefusalOf(int descriptor)
{
    struct stat status;
    if (fstat(descriptor, &status) != 0) return errno;
    if (S_ISREG(status.st_mode)) return 0;
    return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
}

}  // namespace

bool File::Open(const std::filesystem::path& name, Use use)
{
    Close();
    constexpr mode_t kAsTheUserMasks = 0666;
    handle_ = Uninterrupted([&] { return open(name.c_str(), FlagsFor(use), kAsTheUserMasks); });
    if (!IsOpen()) return false;
    const int refusal = RefusalOf(static_cast<int>(handle_));
    if (refusal == 0) return true;
    Close();
    errno = refusal;
    return false;
}

void File::Close()
{
    if (!IsOpen()) return;
    // The failure that made the caller close is still to be reported.
    const int kept = errno;
    close(static_cast<int>(std::exchange(handle_, kClosed)));
    errno = kept;
}

bool File::Read(void* buffer, std::size_t count, std::size_t& got)
{
    got = 0;
    while (got < count) {
        const ssize_t piece = Uninterrupted(
            [&] { return read(static_cast<int>(handle_), static_cast<char*>(buffer) + got, count - got); });
        if (piece < 0) return false;
        if (piece == 0) break;
        got += static_cast<std::size_t>(piece);
    }
    return true;
}

bool File::Write(const void* buffer, std::size_t count)
{
    return WriteWhole(static_cast<int>(handle_), std::string_view(static_cast<const char*>(buffer), count));
}

bool File::GetSize(std::uint64_t& size) const
{
    struct stat status;
    if (fstat(static_cast<int>(handle_), &status) != 0) return false;
    size = static_cast<std::uint64_t>(status.st_size);
    return true;
}

bool File::GetPosition(std::uint64_t& position) const
{
    const off_t found = lseek(static_cast<int>(handle_), 0, SEEK_CUR);
    if (found == -1) return false;
    position = static_cast<std::uint64_t>(found);
    return true;
}

// A position of 2^63 and above turns negative, which the system refuses.
bool File::SetPosition(std::uint64_t position)
{
    return lseek(static_cast<int>(handle_), static_cast<off_t>(position), SEEK_SET) != -1;
}

std::u16string FileNameText(const std::filesystem::path& name)
{
    std::u16string text;
    ToWide(CodePage::Utf8, name.native(), text);
    return text;
}

}  // namespace Platform
