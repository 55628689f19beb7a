// Reports about an input, or about the command itself, on standard error: one line each, or one JSON object with
// --report json.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

struct Place {
    std::string source;         // "" for an argument
    std::size_t number = 0;     // the line, or the count of the action from 1
    bool countsActions = false;
};

struct Remark {
    std::string code;  // a word for programs; what it is about
    std::string message;
    std::string suggestion;  // what may have been meant, "" for none
    std::size_t line = 0;    // below that of the place, for texts of several lines
    std::size_t column = 0;  // from 1; 0 for none
    std::string context;     // lines that show the place
};

// One line: file, line, column, severity, code, message, suggestion; null for those without a value.
std::string JsonReport(const Place& place, const std::string& severity, const Remark& remark);

// An answer is what was asked for, such as why a pattern refuses an action.
enum class Severity { Error, Note, Answer };

std::string TextOf(const Place& place);  // "file:12" or "file:action 3"

// "file:line:column: message", and lines that show the place.
void Report(const Place& place, Severity severity, const Remark& remark);

// "orvact: message", about the command, or "orvact: file: message"; returns the exit code of wrong usage.
int Complain(const std::string& code, const std::string& message, const std::string& suggestion = {},
             const std::string& file = {});

// Why a file cannot be opened or read, by errno; returns the exit code.
int ReportFile(const std::string& path);

// Blank lines and lines that begin with #.
bool IsSkipped(std::string_view line);
