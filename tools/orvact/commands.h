// The commands of the tool. Each prints and returns an exit code.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum ExitCode {
    kDone = 0,
    kNoMatch = 1,     // match and events list: nothing fits
    kUsage = 2,       // also input that cannot be read and output that cannot be written
    kUnreadable = 3,  // some text is not an action
    kInterrupted = 130,
};

struct ShowOptions {
    std::vector<std::string> texts;  // each an action text, or a file; "-" stands for standard input
    std::vector<std::string> files;  // read line by line after the texts
};
int Show(const ShowOptions& options);

struct ListOptions {
    std::string what;        // "classes", "actions" or "enums"
    std::string className;   // actions of this class only; "" for all
    bool hesk = false;       // what converts from and to the sibling product's text
    bool extension = false;  // only what is not built in
    bool json = false;
};
int List(const ListOptions& options);

// An action, a class, an enum, a type or a column of the event record, by name; an action also by code.
int Describe(const std::string& name);

struct ConvertOptions {
    std::string from;  // the name of a form, "" to recognise it
    std::string to;
    std::vector<std::string> files;  // none for standard input, which is also "-"
};
int Convert(const ConvertOptions& options);

struct DumpOptions {
    std::string from;
    std::vector<std::string> files;
};
int Dump(const DumpOptions& options);

struct MatchOptions {
    std::string patterns;  // a match action, when it begins with @, else a file of them
    std::string from;
    std::string to = "technical";
    std::vector<std::string> files;
    bool explain = false;
};
int Match(const MatchOptions& options);

struct EventsStoreOptions {
    std::string database;
    std::string from;
    std::vector<std::string> files;
    std::string recorder;  // who stores; "" for the name of the host
    bool numbered = false; // the input begins with the first event of the recorder
    bool retry = false;    // wait for a server that goes away
};
int StoreEvents(const EventsStoreOptions& options);

struct EventsListOptions {
    std::string database;
    std::string ids;                   // "5", "5..9", "5.." or "..9"; "" for all
    std::vector<std::string> codes;    // codes or names
    std::vector<std::string> classes;  // names
    std::string since;                 // a time or an age
    std::string until;
    std::string pattern;               // as MatchOptions::patterns; "" for any
    std::string limit;                 // the newest so many; "" for all
    std::string to;                    // the name of a form, "" for a list
    std::string groupBy;               // see EventGroups::Keys; "" for no groups
    bool json = false;
    bool csv = false;
    bool count = false;
};
int ListEvents(const EventsListOptions& options);
int FollowEvents(const EventsListOptions& options);
int ReportEvents(const EventsListOptions& options);

struct EventsShowOptions {
    std::string database;
    std::int64_t id = 0;
};
int ShowEvent(const EventsShowOptions& options);

struct EventsPruneOptions {
    std::string database;
    std::string keep;  // an age
};
int PruneEvents(const EventsPruneOptions& options);

// Reports a name that does not exist, with names that may have been meant; returns the exit code.
int ReportUnknown(const std::string& what, const std::string& name, const std::vector<std::string>& names);
