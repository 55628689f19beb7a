// The actions of files or of standard input, in any readable form.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "forms.h"
#include "lines.h"
#include "progress.h"
#include "report.h"

// One action as it stands in the input.
struct Record {
    std::string head;          // the size before a frame
    std::string bytes;         // without what delimits it
    std::uint64_t offset = 0;  // of the bytes in the input
    Place place;
    std::string problem;  // what is wrong with the delimiters; the bytes are what could be read
};

// Which remarks about an action are errors: then it is reported and skipped.
enum class Strictness {
    None,
    Unread,  // text beside what was read
    All,
};

class ActionReader {
public:
    // Remarks are errors by --strict anyway.
    explicit ActionReader(Strictness strictness = Strictness::None);
    ActionReader(const ActionReader&) = delete;
    ActionReader& operator=(const ActionReader&) = delete;
    ~ActionReader();

    // Opens the first file; standard input for "-" and for no file at all. Without a form each file's form is
    // recognised. Reports what is wrong.
    bool Open(std::vector<std::string> files, const Form* form);

    // The next record, readable or not. False at the end, at a failure and when interrupted.
    bool NextRecord(Record& record);
    // The next action. Input that is not an action is reported and skipped.
    bool Next(Action& action, Record& record);
    // Turns a record into an action, or reports why it is not one.
    Action Read(const Record& record) { return Judged(record, *form_); }
    // The same for an action text that stands in no file.
    Action ReadText(const Record& record) { return Judged(record, Forms().front()); }

    const Form& form() const { return *form_; }
    std::size_t unreadable() const { return unreadable_; }
    bool failed() const { return failed_; }  // a file could not be read to its end
    std::uint64_t size() const { return size_; }  // of the present file in bytes, 0 when not known
    std::uint64_t taken() const { return lines_->taken(); }
    // Whether the next action may have to be waited for.
    bool MayWait() const;
    // The program shows the progress itself.
    void HideProgress() { showsProgress_ = false; }

private:
    bool OpenFile(const std::string& path);
    bool Recognise();
    bool NextLine(Record& record);
    bool NextFrame(Record& record);
    bool NextOfRow(Record& record);
    bool NextHere(Record& record);
    void Close();
    Action Judged(const Record& record, const Form& form);
    bool IsError(const Remark& remark) const;

    Strictness strictness_;
    std::vector<std::string> files_;
    std::size_t nextFile_ = 0;
    const Form* wanted_ = nullptr;
    std::string source_;
    std::FILE* file_ = nullptr;
    std::unique_ptr<LineReader> lines_;
    const Form* form_ = nullptr;
    std::string row_;  // all of an input without delimiters
    std::uint64_t size_ = 0;
    std::uint64_t rowPosition_ = 0;
    std::size_t number_ = 0;
    std::size_t unreadable_ = 0;
    std::size_t all_ = 0;
    bool ended_ = false;
    bool failed_ = false;
    bool showsProgress_ = true;
    std::unique_ptr<Progress> progress_;
};
