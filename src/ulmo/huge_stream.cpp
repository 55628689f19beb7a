#include "ulmo/huge_stream.h"

#include <algorithm>
#include <utility>

#include "platform/system_error.h"
#include "ulmo/exceptions.h"

namespace Ulmo {

// The size is only where to begin: the file may grow or shrink meanwhile.
std::string THugeStream::ReadToEnd()
{
    constexpr std::size_t kLeast = 4096;
    const std::uint64_t size = Size();
    const std::uint64_t position = Position();
    const std::uint64_t left = size > position ? size - position : 0;
    std::string bytes;
    std::size_t length = 0;
    // One byte more than the size says: a read that leaves it free has met the end.
    for (auto room = static_cast<std::size_t>(left) + 1;; room = std::max(length, kLeast)) {
        bytes.resize(length + room);
        const std::size_t got = Read(&bytes[length], room);
        length += got;
        if (got != room) break;
    }
    bytes.resize(length);
    return bytes;
}

void THugeHandleStream::Write(const void* buffer, std::size_t count)
{
    if (!file_.Write(buffer, count)) Fail(u"Ulmo::THugeStream::Write");
}

std::size_t THugeHandleStream::Read(void* buffer, std::size_t count)
{
    std::size_t got = 0;
    if (!file_.Read(buffer, count, got)) Fail(u"Ulmo::THugeStream::Read");
    return got;
}

std::uint64_t THugeHandleStream::Size() const
{
    std::uint64_t size = 0;
    if (!file_.GetSize(size)) Fail(u"Ulmo::THugeStream::Size");
    return size;
}

std::uint64_t THugeHandleStream::Position() const
{
    std::uint64_t position = 0;
    if (!file_.GetPosition(position)) Fail(u"Ulmo::THugeStream::Position");
    return position;
}

void THugeHandleStream::SetPosition(std::uint64_t position)
{
    if (!file_.SetPosition(position)) Fail(u"Ulmo::THugeStream::SetPosition");
}

void THugeHandleStream::Fail(std::u16string_view operation) const
{
    ThrowLastError(operation);
}

THugeNamedStream::THugeNamedStream(Platform::File file, std::filesystem::path name)
    : THugeHandleStream(std::move(file)), name_(std::move(name))
{}

void THugeNamedStream::Fail(std::u16string_view operation) const
{
    // First of all: making the text may change it.
    const std::uint32_t code = Platform::LastError();
    ThrowSystemError(code, std::u16string(operation).append(u" of ").append(Platform::FileNameText(name_)));
}

THugeFileStream::THugeFileStream(std::filesystem::path name, Platform::File::Use use)
    : THugeNamedStream({}, std::move(name))
{
    if (!file_.Open(Name(), use)) Fail(u"Ulmo::THugeFileStream::Open");
}

}  // namespace Ulmo
