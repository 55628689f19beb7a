#include "action_reader.h"

#include <cerrno>
#include <utility>

#include "binary_walk.h"
#include "bytes.h"
#include "console.h"
#include "report.h"

namespace {

constexpr std::size_t kHead = 4096;                              // enough to guess a form by
constexpr std::uint32_t kLongestFrame = std::uint32_t{1} << 26;  // no action is anywhere near as long

}  // namespace

ActionReader::~ActionReader()
{
    if (file_ && file_ != stdin) std::fclose(file_);
}

bool ActionReader::Open(const std::string& path, const Form* form)
{
    const bool standard = path.empty() || path == "-";
    source_ = standard ? "stdin" : path;
    file_ = standard ? stdin : OpenFile(path);
    if (!file_) {
        ReportFile(source_);
        return false;
    }
    lines_ = std::make_unique<LineReader>(file_);
    size_ = SizeOnDisk(file_);
    const std::string_view head = lines_->Head(kHead);
    form_ = form ? form : &GuessForm(head);
    if (lines_->failed()) {
        ReportFile(source_);
        return false;
    }
    // What some shells make of every text that passes them.
    const bool utf16 = form_->layout == Layout::Lines && (head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF"));
    if (form_->read && !utf16) return true;
    PrintError("orvact: " + source_ + ": " +
               (utf16 ? "is UTF-16; texts are read in UTF-8"
                      : std::string("looks like ") + form_->name + ", which is only written") +
               "\n");
    return false;
}

bool ActionReader::NextRecord(Record& record)
{
    record.head.clear();
    record.bytes.clear();
    record.problem.clear();
    if (ended_ || Interrupted()) return false;
    const bool found = form_->layout == Layout::Frames     ? NextFrame(record)
                       : form_->layout == Layout::EndToEnd ? NextOfRow(record)
                                                           : NextLine(record);
    if (Interrupted()) return false;  // what was read may be cut
    if (!found && lines_->failed()) {
        failed_ = true;
        ReportFile(source_);
    }
    ended_ = ended_ || !found;
    return found;
}

bool ActionReader::NextLine(Record& record)
{
    bool tooLong = false;
    do {
        record.offset = lines_->taken();
        if (!lines_->Next(record.bytes, tooLong)) return false;
        ++number_;
    } while (!tooLong && IsSkipped(record.bytes));
    record.number = number_;
    if (tooLong) record.problem = "the line is longer than " + std::to_string(LineReader::kLongest) + " bytes";
    return true;
}

bool ActionReader::NextFrame(Record& record)
{
    lines_->Read(record.head, 4);
    if (record.head.empty()) return false;
    record.number = ++number_;
    record.offset = lines_->taken();
    if (record.head.size() < 4) {
        record.problem = "the input ends inside the size of a frame";
        return ended_ = true;
    }
    const std::uint32_t size = Word32At(record.head, 0);
    if (size > kLongestFrame) {
        record.problem = "no frame has " + std::to_string(size) + " bytes; reading stops here";
        return ended_ = true;
    }
    lines_->Read(record.bytes, size);
    if (record.bytes.size() < size) {
        record.problem = "the frame has " + std::to_string(size) + " bytes, and " +
                         std::to_string(record.bytes.size()) + " are left";
        ended_ = true;
    }
    return true;
}

// Without delimiters only the action itself tells where it ends, so behind a damaged one there is no next.
bool ActionReader::NextOfRow(Record& record)
{
    if (number_ == 0) lines_->Read(row_, static_cast<std::uint64_t>(-1));
    if (rowPosition_ == row_.size()) return false;
    const std::string_view left = std::string_view(row_).substr(static_cast<std::size_t>(rowPosition_));
    const BinaryWalk walk = WalkBinary(left, false);
    record.bytes = left.substr(0, walk.problem.empty() ? walk.end : left.size());
    record.number = ++number_;
    record.offset = rowPosition_;
    rowPosition_ += record.bytes.size();
    return true;
}

bool ActionReader::Next(Action& action, Record& record)
{
    while (NextRecord(record)) {
        if (!record.problem.empty()) {
            ++unreadable_;
            Report(record, record.problem);
            continue;
        }
        Decoded decoded = form_->read(record.bytes);
        if (!decoded.note.empty()) Report(record, "note: " + decoded.note, decoded.column, decoded.context);
        if (decoded.action) {
            action = std::move(decoded.action);
            return true;
        }
        ++unreadable_;
        Report(record, decoded.problem, decoded.column, decoded.context);
    }
    return false;
}

bool ActionReader::MayWait() const
{
    const std::string_view waiting = lines_->Waiting();
    if (size_ > 0 || form_->layout == Layout::EndToEnd) return false;
    if (form_->layout == Layout::Lines) return waiting.find('\n') == std::string_view::npos;
    return waiting.size() < 4 || waiting.size() - 4 < Word32At(waiting, 0);
}

std::string ActionReader::Place(const Record& record) const
{
    return source_ + (form_->layout == Layout::Lines ? ":" : ":action ") + std::to_string(record.number);
}

void ActionReader::Report(const Record& record, const std::string& reason, std::size_t column,
                          const std::string& context) const
{
    PrintError(Place(record) + (column ? ":" + std::to_string(column) : "") + ": " + reason + "\n" + context);
}
