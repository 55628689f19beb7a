// orvact: shows, converts, matches and stores actions. But for lint it uses the public interface of the library only.
#include "command_line.h"
#include "console.h"

namespace {

int PerformEvents(const CommandLine& line)
{
    const CLI::App* command = line.app.get_subcommand("events");
    if (command->got_subcommand("store")) return StoreEvents(line.store);
    return command->got_subcommand("list") ? ListEvents(line.events) : ShowEvent(line.event);
}

int Perform(const CommandLine& line)
{
    if (line.app.got_subcommand("lint")) return Lint(line.lint);
    if (line.app.got_subcommand("list")) return List(line.list);
    if (line.app.got_subcommand("describe")) return Describe(line.described);
    if (line.app.got_subcommand("convert")) return Convert(line.convert);
    if (line.app.got_subcommand("dump")) return Dump(line.dump);
    if (line.app.got_subcommand("match")) return Match(line.match);
    if (line.app.got_subcommand("events")) return PerformEvents(line);
    if (!line.show.texts.empty() || !line.show.files.empty()) return Show(line.show);
    PrintError("orvact: show what? Give a TEXT, - or --file; see orvact show --help\n");
    return kUsage;
}

// Help and version are results, faults are not.
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
    std::string commands;
    for (auto chosen = app.get_subcommands(); !chosen.empty(); chosen = chosen.front()->get_subcommands()) {
        commands += chosen.front()->get_name() + " ";
    }
    PrintError("orvact: " + std::string(answer.what()) + "\nSee orvact " + commands + "--help.\n");
    return kUsage;
}

}  // namespace

int Run(const std::vector<std::string>& arguments)
{
    CommandLine line;
    int code = kDone;
    try {
        line.app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        code = Perform(line);
    } catch (const CLI::ParseError& answer) {
        code = Answer(line.app, answer);
    }
    if (FlushOutput()) return code;
    PrintError("orvact: cannot write the results\n");
    return kUsage;
}
