// The commands of the tool. Each prints and returns an exit code.
#pragma once

#include <string>
#include <vector>

enum ExitCode {
    kDone = 0,
    kUsage = 2,       // also input that cannot be read and output that cannot be written
    kUnreadable = 3,  // some text is no action
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

// Reports a name that does not exist, with names that may have been meant; returns the exit code.
int ReportUnknown(const std::string& what, const std::string& name, const std::vector<std::string>& names);
