// An open file of the system, with 64-bit sizes and positions. Regular files only: a pipe or a device in a file's place
// is refused, so that nothing waits for it.
//
// The functions only answer; ulmo/huge_stream.h wraps them with the exceptions of this system. False means failure with
// the reason in LastError().
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>

namespace Platform {

class File {
public:
    enum class Use {
        Read,    // an existing file; others may read, replace and delete it meanwhile
        Append,  // made when missing, and every write goes to its end; others may read, rename and delete it meanwhile
    };

    File() = default;
    File(File&& other) noexcept : handle_(std::exchange(other.handle_, kClosed)) {}
    // What was open here closes with the other.
    File& operator=(File&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~File() { Close(); }

    bool Open(const std::filesystem::path& name, Use use);  // closes what was open
    void Close();                                           // keeps LastError()
    bool IsOpen() const { return handle_ != kClosed; }

    bool Read(void* buffer, std::size_t count, std::size_t& got);  // fewer than asked for only at the end
    bool Write(const void* buffer, std::size_t count);             // all of it
    bool GetSize(std::uint64_t& size) const;
    // When appending this is the position of the system, which does not matter for the writes.
    bool GetPosition(std::uint64_t& position) const;
    bool SetPosition(std::uint64_t position);  // beyond the end is allowed; there is nothing to read there

private:
    static constexpr std::intptr_t kClosed = -1;

    std::intptr_t handle_ = kClosed;  // a file descriptor or a HANDLE
};

// A file's name as text for messages.
std::u16string FileNameText(const std::filesystem::path& name);

}  // namespace Platform
