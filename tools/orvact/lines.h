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
    // What no memory holds is passed over, up to the end of the line.
    static constexpr std::size_t kLongest = std::size_t{1} << 30;

    explicit LineReader(std::FILE* file) : file_(file) {}

    // From here on, and of what has been read already: texts in this encoding become UTF-8. What is wrong in them
    // becomes a byte that is wrong in UTF-8.
    void Decode(Encoding encoding);

    // False at the end and when reading fails. The line comes without its end, "\n", "\r" or "\r\n", and without a byte
    // order mark; NUL bytes are ordinary.
    bool Next(std::string& line, bool& tooLong);
    // What ended the last line.
    std::string LineEnd();

    // Appends the next bytes; fewer than asked for only at the end.
    void Read(std::string& bytes, std::uint64_t count);
    // What the input begins with, without taking it: up to a whole line, or `count` bytes, or all there is.
    std::string_view Head(std::size_t count);

    std::uint64_t taken() const;  // bytes from the start; with a decoded encoding those that were read
    std::string_view Waiting() const { return std::string_view(buffer_).substr(position_); }  // has been read already
    bool failed() const { return failed_; }

private:
    bool Refill();  // behind what is left
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
