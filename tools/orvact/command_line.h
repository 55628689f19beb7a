// The commands and options of the tool and where their values go. The manual pages and the completions of the shells
// are made of it as well, see tools/pages.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

#include "catalogue_pages.h"
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
    EventsPruneOptions prune;
    LintOptions lint;
    CatalogueOptions catalogue;
    std::string output;  // "" and "-" for standard output
    std::string colours = "auto";
    std::string report = "text";
    std::string encoding;

    CommandLine();
    // The options that hold for every command, into settings and the console.
    void Settle() const;

private:
    void AddShow();
    void AddList();
    void AddDescribe();
    void AddConvert();
    void AddDump();
    void AddMatch();
    void AddCatalogue();
    void AddEvents();
    void AddEventsList(CLI::App* events);
    void AddEventsFollow(CLI::App* events);
    void AddEventsReport(CLI::App* events);
    void AddDatabase(CLI::App* command, std::string& database);
    void AddEventFilters(CLI::App* command);
    void AddPeriod(CLI::App* command);
    void AddCommon(CLI::App* command);
    void AddReporting(CLI::App* command);
    void AddInput(CLI::App* command, std::string& form, std::vector<std::string>& files);
    void AddReading(CLI::App* command);
    void AddForce(CLI::App* command);
};
