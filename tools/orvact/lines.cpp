#include "lines.h"

#include <algorithm>

#include "console.h"

bool LineReader::Refill()
{
    constexpr std::size_t kPiece = 65536;
    buffer_.resize(kPiece);
    buffer_.resize(ReadBytes(file_, buffer_.data(), buffer_.size()));
    position_ = 0;
    return !buffer_.empty();
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
