#include "action_reader.h"

#include <cerrno>
#include <set>
#include <utility>

#include "binary_walk.h"
#include "bytes.h"
#include "console.h"
#include "settings.h"

namespace {

constexpr std::size_t kHead = 4096;                     // enough to guess a form by
constexpr std::uint32_t kLongestFrame = 0x7FFF'FFFF;  // a size beyond it is no size

// As asked for, else by the byte order mark, else UTF-8.
Encoding EncodingOf(std::string_view head)
{
    if (settings.encoding != Encoding::Found) return settings.encoding;
    // The size of a frame may begin as a byte order mark does.
    if (LooksLikeFrames(head)) return Encoding::Utf8;
    if (head.starts_with("\xFF\xFE")) return Encoding::Utf16Little;
    return head.starts_with("\xFE\xFF") ? Encoding::Utf16Big : Encoding::Utf8;
}

bool IsText(const Form& form)
{
    return form.layout == Layout::Lines || form.layout == Layout::Documents;
}

}  // namespace

ActionReader::ActionReader(Strictness strictness) : strictness_(settings.strict ? Strictness::All : strictness)
{}

ActionReader::~ActionReader()
{
    Close();
}

void ActionReader::Close()
{
    // Standard input is the process's own; a later "-" finds it at its end.
    if (file_ && file_ != stdin) std::fclose(file_);
    file_ = nullptr;
}

bool ActionReader::Open(std::vector<std::string> files, const Form* form)
{
    files_ = std::move(files);
    if (files_.empty()) files_.push_back("-");
    wanted_ = form;
    return OpenFile(files_[nextFile_++]);
}

bool ActionReader::OpenFile(const std::string& path)
{
    Close();
    const bool standard = path == "-";
    source_ = standard ? "stdin" : path;
    file_ = standard ? stdin : ::OpenFile(path);
    row_.clear();
    rowPosition_ = number_ = 0;
    ended_ = true;
    failed_ = true;
    if (!file_) {
        ReportFile(source_);
        return false;
    }
    lines_ = std::make_unique<LineReader>(file_);
    size_ = SizeOnDisk(file_);
    if (!Recognise()) return false;
    ended_ = failed_ = false;
    if (showsProgress_ && ShowsPassing()) progress_ = std::make_unique<Progress>(size_, "action");
    return true;
}

bool ActionReader::Recognise()
{
    std::string_view head = lines_->Head(kHead);
    // A binary form that is asked for is never decoded, whatever its bytes look like.
    if (!wanted_ || IsText(*wanted_)) {
        const Encoding encoding = EncodingOf(head);
        lines_->Decode(encoding);
        if (encoding != Encoding::Utf8) head = lines_->Head(kHead);
    }
    form_ = wanted_ ? wanted_ : &GuessForm(head);
    if (lines_->failed()) {
        ReportFile(source_);
        return false;
    }
    if (form_->read) return true;
    Complain("form", std::string("looks like ") + form_->name + ", which is only written", {}, source_);
    return false;
}

bool ActionReader::NextRecord(Record& record)
{
    while (!NextHere(record)) {
        // Kept over the next file, which begins without a failure of its own.
        const bool failedHere = failed_;
        // A file that cannot be read does not keep the next from being read.
        if (Interrupted() || nextFile_ == files_.size()) return false;
        OpenFile(files_[nextFile_++]);
        failed_ = failed_ || failedHere;
    }
    return true;
}

bool ActionReader::NextHere(Record& record)
{
    record = {};
    if (ended_ || Interrupted()) return false;
    record.place = {source_, 0, !IsText(*form_)};
    const bool found = form_->layout == Layout::Frames     ? NextFrame(record)
                       : form_->layout == Layout::EndToEnd ? NextOfRow(record)
                                                           : NextLine(record);
    if (Interrupted()) return false;  // what was read may be cut
    if (!found && lines_->failed()) {
        failed_ = true;
        ReportFile(source_);
    }
    ended_ = ended_ || !found;
    if (found && progress_) progress_->Show(taken(), ++all_);
    if (!found) progress_.reset();
    return found;
}

bool ActionReader::NextLine(Record& record)
{
    bool tooLong = false;
    do {
        record.offset = lines_->taken();
        if (!lines_->Next(record.bytes, tooLong)) return false;
        record.place.number = ++number_;
    } while (!tooLong && IsSkipped(record.bytes));
    // A backslash at the end of a line holds the line break for the text; a document goes on until it is whole.
    DocumentWalk document;
    if (form_->layout == Layout::Documents) document.Add(record.bytes);
    const auto continues = [&] {
        return form_->layout == Layout::Documents ? !document.IsWhole() : record.bytes.ends_with('\\');
    };
    std::string more;
    while (!tooLong && continues()) {
        const std::string end = lines_->LineEnd();
        if (end.empty() || !lines_->Next(more, tooLong)) break;
        ++number_;
        if (form_->layout == Layout::Documents) {
            document.Add(more);
        } else {
            record.bytes.pop_back();
        }
        tooLong = tooLong || record.bytes.size() + more.size() > LineReader::kLongest;
        record.bytes += end + more;
    }
    if (tooLong) record.problem = "the line is longer than " + std::to_string(LineReader::kLongest) + " bytes";
    return true;
}

bool ActionReader::NextFrame(Record& record)
{
    lines_->Read(record.head, 4);
    if (record.head.empty()) return false;
    record.place.number = ++number_;
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
    // Reads as the bytes arrive, so a size that is not true takes no memory.
    lines_->Read(record.bytes, size);
    if (record.bytes.size() < size) {
        record.problem = "the frame has " + std::to_string(size) + " bytes, and " +
                         std::to_string(record.bytes.size()) + " are left";
        ended_ = true;
    }
    return true;
}

// Without delimiters only the action itself tells where it ends, so after a damaged one there is no next.
bool ActionReader::NextOfRow(Record& record)
{
    // All of it at once: only the walk over an action tells where the next begins.
    if (number_ == 0) lines_->Read(row_, static_cast<std::uint64_t>(-1));
    if (rowPosition_ == row_.size()) return false;
    const std::string_view left = std::string_view(row_).substr(static_cast<std::size_t>(rowPosition_));
    const BinaryWalk walk = WalkBinary(left, false);
    record.bytes = left.substr(0, walk.problem.empty() ? walk.end : left.size());
    record.place.number = ++number_;
    record.offset = rowPosition_;
    rowPosition_ += record.bytes.size();
    return true;
}

bool ActionReader::IsError(const Remark& remark) const
{
    return strictness_ == Strictness::All || (strictness_ == Strictness::Unread && remark.code == kUnreadCode);
}

Action ActionReader::Judged(const Record& record, const Form& form)
{
    Decoded decoded;
    if (record.problem.empty()) {
        decoded = form.read(record.bytes);
    } else {
        decoded.problem = {"damaged", record.problem, {}, 0, 0, {}};
    }
    std::set<std::string> told;  // one of a kind is enough for a line
    bool refused = false;
    for (const Remark& remark : decoded.remarks) {
        if (!told.insert(remark.code).second) continue;
        refused = refused || IsError(remark);
        ::Report(record.place, IsError(remark) ? Severity::Error : Severity::Note, remark);
    }
    if (!decoded.action) ::Report(record.place, Severity::Error, decoded.problem);
    unreadable_ += refused || !decoded.action;
    return refused ? Action() : std::move(decoded.action);
}

bool ActionReader::Next(Action& action, Record& record)
{
    while (NextRecord(record)) {
        if (Action read = Read(record)) {
            action = std::move(read);
            return true;
        }
    }
    return false;
}

bool ActionReader::MayWait() const
{
    const std::string_view waiting = lines_->Waiting();
    // A file on a disk has all that it will have, and an input without delimiters has been read to its end.
    if (size_ > 0 || form_->layout == Layout::EndToEnd) return false;
    if (IsText(*form_)) return waiting.find_first_of("\r\n") == std::string_view::npos;
    return waiting.size() < 4 || waiting.size() - 4 < Word32At(waiting, 0);
}
