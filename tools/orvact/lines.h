// Lines, or bytes, of a file or of standard input, whatever they hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

class LineReader {
public:
    // No action is anywhere near as long; the rest of such a line is passed over.
    static constexpr std::size_t kLongest = std::size_t{1} << 20;

    explicit LineReader(std::FILE* file) : file_(file) {}

    // False at the end and when reading fails. The line comes without its end, "\n" or "\r\n", and without a byte order
    // mark; NUL bytes are ordinary.
    bool Next(std::string& line, bool& tooLong);

    // Appends the next bytes; fewer than asked for only at the end.
    void Read(std::string& bytes, std::uint64_t count);
    // What the input begins with, without taking it: up to a whole line, or `count` bytes, or all there is.
    std::string_view Head(std::size_t count);

    std::uint64_t taken() const { return before_ + position_; }                               // bytes from the start
    std::string_view Waiting() const { return std::string_view(buffer_).substr(position_); }  // has been read already
    bool failed() const { return failed_; }

private:
    bool Refill();  // behind what is left

    std::FILE* file_;
    std::string buffer_;
    std::size_t position_ = 0;
    std::uint64_t before_ = 0;
    bool first_ = true;
    bool failed_ = false;
};
