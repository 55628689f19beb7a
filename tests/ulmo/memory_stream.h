// A stream in memory: writes go to its end, reads begin at its start.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>

#include "ulmo/byte_stream.h"

class MemoryStream : public Ulmo::IByteStream {
public:
    explicit MemoryStream(std::string bytes = {}) : bytes_(std::move(bytes)) {}

    void Write(const void* buffer, std::size_t count) override
    {
        bytes_.append(static_cast<const char*>(buffer), count);
    }
    std::size_t Read(void* buffer, std::size_t count) override
    {
        const std::size_t got = std::min(count, bytes_.size() - position_);
        std::memcpy(buffer, bytes_.data() + position_, got);
        position_ += got;
        return got;
    }
    const std::string& Bytes() const { return bytes_; }
    std::string Left() const { return bytes_.substr(position_); }

private:
    std::string bytes_;
    std::size_t position_ = 0;
};
