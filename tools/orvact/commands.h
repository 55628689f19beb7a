// The commands of the tool. Each prints and returns an exit code.
#pragma once

#include <string>
#include <vector>

enum ExitCode {
    kDone = 0,
    kNoMatch = 1,     // match and events list: nothing fits
    kUsage = 2,       // also input that cannot be read and output that cannot be written
    kUnreadable = 3,  // some text is no action
    kInterrupted = 130,
};

struct ShowOptions {
    std::vector<std::string> texts;  // each an action text; "-" stands for standard input
    std::vector<std::string> files;  // read line by line after the texts
};
int Show(const ShowOptions& options);

struct ListOptions {
    std::string what;       // "classes", "actions" or "enums"
    std::string className;  // actions of this class only; "" for all
    bool json = false;
};
int List(const ListOptions& options);

int Describe(const std::string& nameOrCode);

struct ConvertOptions {
    std::string from;  // the name of a form, "" to find it out
    std::string to;
    std::string file;  // "" for standard input
};
int Convert(const ConvertOptions& options);

struct DumpOptions {
    std::string from;
    std::string file;
};
int Dump(const DumpOptions& options);

// Reports a name that does not exist, with names that may have been meant; returns the exit code.
int ReportUnknown(const std::string& what, const std::string& name, const std::vector<std::string>& names);
