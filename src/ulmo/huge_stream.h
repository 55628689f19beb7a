// Files as streams of bytes with 64-bit sizes and positions.
//
// Failures raise SystemException with the system's code and the name of the operation, and of the file where it is
// known. A stream is for one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "platform/file.h"
#include "ulmo/byte_stream.h"

namespace Ulmo {

class THugeStream : public IByteStream {
public:
    virtual std::uint64_t Size() const = 0;
    virtual std::uint64_t Position() const = 0;
    virtual void SetPosition(std::uint64_t position) = 0;  // of the next read
    virtual ~THugeStream() = default;

    std::string ReadToEnd();  // from the position on
};

// A stream over a file that somebody has opened; owns it.
class THugeHandleStream : public THugeStream {
public:
    explicit THugeHandleStream(Platform::File file) : file_(std::move(file)) {}

    void Write(const void* buffer, std::size_t count) override;
    std::size_t Read(void* buffer, std::size_t count) override;
    std::uint64_t Size() const override;
    std::uint64_t Position() const override;
    void SetPosition(std::uint64_t position) override;

protected:
    // Raises the failure of the last system call.
    [[noreturn]] virtual void Fail(std::u16string_view operation) const;

    Platform::File file_;
};

// As above, and the name of the file stands in the message of each failure.
class THugeNamedStream : public THugeHandleStream {
public:
    THugeNamedStream(Platform::File file, std::filesystem::path name);

    const std::filesystem::path& Name() const { return name_; }

protected:
    [[noreturn]] void Fail(std::u16string_view operation) const override;

private:
    std::filesystem::path name_;
};

// A file that is opened by its name, for reading or for appending.
class THugeFileStream : public THugeNamedStream {
public:
    explicit THugeFileStream(std::filesystem::path name, Platform::File::Use use = Platform::File::Use::Read);
};

}  // namespace Ulmo
