#include "lines.h"

#include <algorithm>

#include "console.h"
#include "report.h"

bool LineReader::Refill()
{
    constexpr std::size_t kPiece = 65536;
    buffer_.erase(0, position_);
    before_ += position_;
    position_ = 0;
    const std::size_t left = buffer_.size();
    buffer_.resize(left + kPiece);
    const std::size_t count = failed_ ? 0 : ReadBytes(file_, buffer_.data() + left, kPiece, failed_);
    buffer_.resize(left + count);
    return count > 0;
}

bool LineReader::Next(std::string& line, bool& tooLong)
{
    line.clear();
    tooLong = false;
    bool any = false;
    for (bool ended = false; !ended;) {
        if (position_ == buffer_.size() && !Refill()) break;
        any = true;
        const std::size_t end = buffer_.find('\n', position_);
        ended = end != std::string::npos;
        const std::size_t count = (ended ? end : buffer_.size()) - position_;
        const std::size_t room = kLongest + 1 - line.size();
        line.append(buffer_, position_, std::min(count, room));
        tooLong = tooLong || line.size() > kLongest;
        position_ += count + ended;
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (first_ && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);
    first_ = false;
    return any;
}

void LineReader::Read(std::string& bytes, std::uint64_t count)
{
    while (count > 0 && (position_ < buffer_.size() || Refill())) {
        const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(count, buffer_.size() - position_));
        bytes.append(buffer_, position_, part);
        position_ += part;
        count -= part;
    }
}

std::string_view LineReader::Head(std::size_t count)
{
    // A comment says nothing about the form, so it does not end the head.
    const auto told = [&] {
        for (std::size_t begin = 0, end; (end = buffer_.find('\n', begin)) != std::string::npos; begin = end + 1) {
            if (!IsSkipped(buffer_.substr(begin, end - begin))) return true;
        }
        return buffer_.size() >= count;
    };
    while (!told() && Refill()) {
    }
    return buffer_;
}
