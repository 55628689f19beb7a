// The actions of a file or of standard input, in whichever readable form they stand.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "forms.h"
#include "lines.h"

// One action as it stands in the input.
struct Record {
    std::string head;          // the size in front of a frame
    std::string bytes;         // without what delimits it
    std::uint64_t offset = 0;  // of the bytes in the input
    std::size_t number = 0;    // the line, or the count of the action from 1
    std::string problem;       // what is wrong with the delimiters; the bytes are what there is
};

class ActionReader {
public:
    ActionReader() = default;
    ActionReader(const ActionReader&) = delete;
    ActionReader& operator=(const ActionReader&) = delete;
    ~ActionReader();

    // Opens a file, or standard input for "" and "-". Without a form it is found out. Reports what is wrong.
    bool Open(const std::string& path, const Form* form);

    // The next record, readable or not. False at the end, at a failure and when interrupted.
    bool NextRecord(Record& record);
    // The next action. What is none is reported and passed over.
    bool Next(Action& action, Record& record);

    // Reports something about a record, at its place.
    void Report(const Record& record, const std::string& reason, std::size_t column = 0,
                const std::string& context = {}) const;

    const Form& form() const { return *form_; }
    std::string Place(const Record& record) const;  // "file:12" or "file:action 3"
    std::size_t unreadable() const { return unreadable_; }
    bool failed() const { return failed_; }
    std::uint64_t size() const { return size_; }  // in bytes, 0 when not known
    std::uint64_t taken() const { return lines_->taken(); }
    // Whether the next action may have to be waited for.
    bool MayWait() const;

private:
    bool NextLine(Record& record);
    bool NextFrame(Record& record);
    bool NextOfRow(Record& record);

    std::string source_;
    std::FILE* file_ = nullptr;
    std::unique_ptr<LineReader> lines_;
    const Form* form_ = nullptr;
    std::string row_;  // all of an input without delimiters
    std::uint64_t size_ = 0;
    std::uint64_t rowPosition_ = 0;
    std::size_t number_ = 0;
    std::size_t unreadable_ = 0;
    bool ended_ = false;
    bool failed_ = false;
};
