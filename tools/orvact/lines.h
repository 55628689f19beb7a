// Lines of a file or of standard input, whatever bytes they hold.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

class LineReader {
public:
    // No action is anywhere near as long; the rest of such a line is passed over.
    static constexpr std::size_t kLongest = std::size_t{1} << 20;

    explicit LineReader(std::FILE* file) : file_(file) {}

    // False at the end and when reading fails. The line comes without its end, "\n" or "\r\n", and without a byte order
    // mark; NUL bytes are ordinary.
    bool Next(std::string& line, bool& tooLong);
    bool failed() const { return std::ferror(file_) != 0; }

private:
    bool Refill();

    std::FILE* file_;
    std::string buffer_;
    std::size_t position_ = 0;
    bool first_ = true;
};
