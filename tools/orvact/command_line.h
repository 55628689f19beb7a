// The commands and options of the tool and where their values go. The manual pages and the completions of the shells
// are made of it as well, see tools/pages.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

#include "commands.h"
#include "lint.h"

struct CommandLine {
    CLI::App app{"Shows, converts, matches and stores actions, and lists what the catalogue holds.", "orvact"};
    ShowOptions show;
    ListOptions list;
    std::string described;
    ConvertOptions convert;
    DumpOptions dump;
    MatchOptions match;
    EventsStoreOptions store;
    EventsListOptions events;
    EventsShowOptions event;
    LintOptions lint;

    CommandLine();

private:
    void AddShow();
    void AddList();
    void AddDescribe();
    void AddConvert();
    void AddDump();
    void AddMatch();
    void AddEvents();
};
