// orvact: shows, converts, matches and stores actions. Except for lint and the extension files of catalogue it only
// uses the public interface of the library.
#include <OrvActions.hpp>
#include <cstdio>
#include <new>
#include <system_error>

#include "command_line.h"
#include "catalogue_view.h"
#include "console.h"
#include "report.h"
#include "settings.h"
#include "text.h"

namespace {

int PerformEvents(const CommandLine& line)
{
    const CLI::App* command = line.app.get_subcommand("events");
    if (command->got_subcommand("store")) return StoreEvents(line.store);
    if (command->got_subcommand("list")) return ListEvents(line.events);
    if (command->got_subcommand("follow")) return FollowEvents(line.events);
    if (command->got_subcommand("prune")) return PruneEvents(line.prune);
    return command->got_subcommand("report") ? ReportEvents(line.events) : ShowEvent(line.event);
}

// Options for every command have been settled.
int Perform(const CommandLine& line)
{
    if (line.app.got_subcommand("lint")) return Lint(line.lint);
    if (line.app.got_subcommand("list")) return List(line.list);
    if (line.app.got_subcommand("describe")) return Describe(line.described);
    if (line.app.got_subcommand("catalogue")) return WriteCatalogue(line.catalogue);
    if (line.app.got_subcommand("convert")) return Convert(line.convert);
    if (line.app.got_subcommand("dump")) return Dump(line.dump);
    if (line.app.got_subcommand("match")) return Match(line.match);
    if (line.app.got_subcommand("events")) return PerformEvents(line);
    if (!line.show.texts.empty() || !line.show.files.empty()) return Show(line.show);
    return Complain("usage", "show what? Give a TEXT, a file or -; see orvact show --help");
}

std::vector<std::string> OptionsOf(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) {
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    return names;
}

std::vector<std::string> CommandsOf(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands({})) names.push_back(command->get_name());
    return names;
}

// Help and version are results, errors are not.
int Answer(const CLI::App& app, const CLI::ParseError& answer)
{
    if (dynamic_cast<const CLI::CallForHelp*>(&answer)) {
        Print(app.help());
        return kDone;
    }
    if (dynamic_cast<const CLI::CallForVersion*>(&answer)) {
        Print(std::string(answer.what()) + "\n");
        return kDone;
    }
    const CLI::App* command = &app;
    std::string path;
    for (auto chosen = app.get_subcommands(); !chosen.empty(); chosen = command->get_subcommands()) {
        command = chosen.front();
        path += command->get_name() + " ";
    }
    const std::string see = "; see orvact " + path + "--help";
    const std::vector<std::string> unknown = app.remaining(true);
    if (unknown.empty()) return Complain("usage", answer.what() + see);
    const std::string word = unknown.front().substr(0, unknown.front().find('='));
    if (word.starts_with("-")) {
        return Complain("usage", "no option '" + Visible(word) + "'" + see, Nearest(word, OptionsOf(*command)));
    }
    const bool lacksCommand = !command->get_subcommands({}).empty();
    return lacksCommand ? Complain("usage", "no command '" + Visible(word) + "'" + see,
                                   Nearest(word, CommandsOf(*command)))
                        : Complain("usage", "'" + Visible(word) + "' is not expected here" + see);
}

// The file of the results is kept if the work came to its end, whatever it found.
int Finish(int code)
{
    const bool whole = code != kUsage && code != kInterrupted;
    return FinishOutput(whole) ? code : Complain("output", "cannot write the results");
}

// Errors in the command line are reported in the form that it asks for.
bool AsksForJson(const std::vector<std::string>& arguments)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--report=json") return true;
        if (arguments[i] == "--report" && i + 1 < arguments.size() && arguments[i + 1] == "json") return true;
    }
    return false;
}

// Faults of the command line come before the file of the results is touched.
int ParseAndPerform(CommandLine& line, const std::vector<std::string>& arguments)
{
    try {
        // The parser takes its arguments from the back.
        line.app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& answer) {
        return Answer(line.app, answer);
    }
    line.Settle();
    if (!SendOutputTo(line.output)) return ReportFile(line.output);
    return Perform(line);
}

}  // namespace

int Run(const std::vector<std::string>& arguments)
{
    settings.jsonReport = AsksForJson(arguments);
    CommandLine line;
    int code = kUsage;
    try {
        code = ParseAndPerform(line, arguments);
    } catch (const std::bad_alloc&) {
        Complain("memory", "there is no memory for this");
    } catch (const orv::Error& error) {
        Complain("library", error.what());
    } catch (const std::system_error& error) {
        Complain("system", error.what());
    }
    return Finish(code);
}
