// The tool's own table of commands and options, as pages and completions want it.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

struct PageOption {
    std::vector<std::string> flags;  // "-h", "--help"; empty for a positional argument
    std::string name;                // of a positional argument, or of the option's value; "" for a plain flag
    std::string help;
    std::vector<std::string> choices;  // what the value may be, where that is known
    bool file = false;                 // the value is, or may be, a file
    bool required = false;
    bool repeated = false;
};

struct CommandPage {
    std::vector<std::string> path;  // "orvact", "events", "list"
    std::string help;
    std::string footer;
    std::vector<PageOption> options;
    std::vector<PageOption> arguments;
    std::vector<CommandPage> commands;

    std::string Joined(const char* separator) const;
};

CommandPage PageOf(const CLI::App& app);

// Calls the visitor with a page and all pages below it.
template <typename Visitor>
void Walk(const CommandPage& page, Visitor visitor)
{
    visitor(page);
    for (const CommandPage& command : page.commands) Walk(command, visitor);
}
