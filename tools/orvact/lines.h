// Lines, or bytes, of a file or of standard input, whatever they hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "settings.h"

class LineReader {
public:
    // A line that does not fit into memory is skipped up to its end.
    static constexpr std::size_t kLongest = std::size_t{1} << 30;

    explicit LineReader(std::FILE* file) : file_(file) {}

    // Converts texts in this encoding to UTF-8, from here on and in what has been read already. An invalid character
    // becomes a byte that is invalid in UTF-8.
    void Decode(Encoding encoding);

    // False at the end and when reading fails. The line comes without its end, "\n", "\r" or "\r\n", and without a byte
    // order mark; NUL bytes are ordinary.
    bool Next(std::string& line, bool& tooLong);
    // What ended the last line.
    std::string LineEnd();

    // Appends the next bytes; fewer than asked for only at the end.
    void Read(std::string& bytes, std::uint64_t count);
    // The start of the input, which stays unread: a whole line, or `count` bytes, or all there is.
    std::string_view Head(std::size_t count);

    std::uint64_t taken() const;  // bytes from the start; with a decoded encoding those that were read
    std::string_view Waiting() const { return std::string_view(buffer_).substr(position_); }  // has been read already
    bool failed() const { return failed_; }

private:
    bool Refill();  // after what is left
    void AppendDecoded(std::string_view bytes, bool last);
    void TakeLineFeed();

    std::FILE* file_;
    Encoding encoding_ = Encoding::Utf8;
    std::string buffer_;
    std::string undecoded_;  // the part of a character
    std::size_t position_ = 0;
    std::uint64_t before_ = 0;
    std::uint64_t read_ = 0;
    std::string end_;
    bool afterReturn_ = false;  // a line feed that comes next belongs to the line end
    bool first_ = true;
    bool failed_ = false;
};
