#include "lines.h"

#include <OrvActions.hpp>
#include <algorithm>

#include "console.h"
#include "report.h"
#include "text.h"

namespace {

constexpr std::size_t kPiece = 65536;

}  // namespace

bool LineReader::Refill()
{
    buffer_.erase(0, position_);
    before_ += position_;
    position_ = 0;
    const std::size_t left = buffer_.size();
    for (;;) {
        buffer_.resize(left + kPiece);
        const std::size_t count = failed_ ? 0 : ReadBytes(file_, buffer_.data() + left, kPiece, failed_);
        read_ += count;
        buffer_.resize(left + count);
        // UTF-8 is passed on as it is, damaged or not; the reader of the form says what is wrong with it.
        if (encoding_ == Encoding::Utf8) return count > 0;
        const std::string bytes = buffer_.substr(left);
        buffer_.resize(left);
        AppendDecoded(bytes, count == 0);
        if (count == 0 || buffer_.size() > left) return buffer_.size() > left;
    }
}

void LineReader::Decode(Encoding encoding)
{
    encoding_ = encoding;
    if (encoding == Encoding::Utf8) return;
    const std::string bytes = buffer_.substr(position_);
    buffer_.resize(position_);
    AppendDecoded(bytes, false);
}

void LineReader::AppendDecoded(std::string_view bytes, bool last)
{
    if (encoding_ == Encoding::Latin1) {
        for (const char byte : bytes) AppendUtf8(buffer_, static_cast<unsigned char>(byte));
        return;
    }
    undecoded_ += bytes;
    const auto unit = [&](std::size_t at) {
        const auto byte = [&](std::size_t i) {
            return static_cast<unsigned>(static_cast<unsigned char>(undecoded_[i]));
        };
        const bool little = encoding_ == Encoding::Utf16Little;
        return static_cast<char16_t>(little ? byte(at) | byte(at + 1) << 8 : byte(at) << 8 | byte(at + 1));
    };
    std::u16string units;
    for (std::size_t at = 0; at + 1 < undecoded_.size(); at += 2) units += unit(at);
    // Half of a pair waits for the other one.
    const bool half = !last && !units.empty() && units.back() >= 0xD800 && units.back() < 0xDC00;
    if (half) units.pop_back();
    undecoded_.erase(0, 2 * units.size());
    const std::string decoded = orv::ToUtf8(units);
    buffer_ += decoded;
    // A byte that no UTF-8 holds marks what could not be decoded, so that it is reported.
    if (orv::ToUtf16(decoded) != units) buffer_ += '\xFF';
    if (last && !undecoded_.empty()) buffer_ += '\xFF';
    if (last) undecoded_.clear();
}

void LineReader::TakeLineFeed()
{
    if (!afterReturn_) return;
    afterReturn_ = false;
    if ((position_ == buffer_.size() && !Refill()) || buffer_[position_] != '\n') return;
    ++position_;
    end_ = "\r\n";
}

std::string LineReader::LineEnd()
{
    TakeLineFeed();
    return end_;
}

bool LineReader::Next(std::string& line, bool& tooLong)
{
    TakeLineFeed();
    line.clear();
    tooLong = false;
    bool any = false;
    end_.clear();
    while (end_.empty()) {
        if (position_ == buffer_.size() && !Refill()) break;
        any = true;
        const std::size_t found = buffer_.find_first_of("\r\n", position_);
        const std::size_t count = std::min(found, buffer_.size()) - position_;
        // One byte more than the longest line, which is how a line that is too long shows.
        line.append(buffer_, position_, std::min(count, kLongest + 1 - line.size()));
        tooLong = tooLong || line.size() > kLongest;
        position_ += count;
        if (found != std::string::npos) end_ = buffer_[position_++];
    }
    // No waiting for it: the line is whole.
    afterReturn_ = end_ == "\r";
    if (afterReturn_ && position_ < buffer_.size()) TakeLineFeed();
    if (first_ && line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
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
        const std::string_view head(buffer_);
        for (std::size_t begin = 0, end; (end = head.find_first_of("\r\n", begin)) != head.npos; begin = end + 1) {
            if (!IsSkipped(head.substr(begin, end - begin))) return true;
        }
        return head.size() >= count;
    };
    while (!told() && Refill()) {
    }
    return buffer_;
}

std::uint64_t LineReader::taken() const
{
    return encoding_ == Encoding::Utf8 ? before_ + position_ : read_;
}
