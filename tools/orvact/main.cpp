// orvact: shows, lists and describes actions. It uses the public interface of the library only.
#include <OrvActions.h>
#include <CLI/CLI.hpp>

#include "commands.h"
#include "console.h"

namespace {

struct CommandLine {
    CLI::App app{"Shows what action texts say and what the catalogue holds.", "orvact"};
    ShowOptions show;
    ListOptions list;
    std::string described;

    CommandLine();
    void AddShow();
    void AddList();
    void AddDescribe();
};

CommandLine::CommandLine()
{
    app.require_subcommand(1);
    app.set_help_flag("-h,--help", "This page, or that of a command");
    const std::string version =
        "orvact, interface " + std::to_string(OrvAct_InterfaceVersion()) + " of " + OrvAct_InterfaceDate();
    app.set_version_flag("--version", version)->description("The version of the interface and its date");
    app.footer(
        "Exit codes: 0 all is well, 2 wrong usage, unreadable input or an unknown name, 3 some text is no\n"
        "action. Results go to standard output, everything else to standard error; both are UTF-8.\n"
        "Colours appear on a terminal, and never when NO_COLOR is set.");
    AddShow();
    AddList();
    AddDescribe();
}

void CommandLine::AddShow()
{
    CLI::App* command = app.add_subcommand("show", "Reads action texts and tells what they are");
    command
        ->add_option("TEXT", show.texts,
                     "An action text, in quotes for the shell; - for standard input, an action a line")
        ->type_name("");
    command->add_option("--file", show.files, "A file with an action a line; may be given several times")
        ->type_name("FILE")
        ->allow_extra_args(false);
    command->footer(
        "Arguments are always texts, never file names. In files and standard input blank lines and lines\n"
        "that begin with # are skipped. A text that is no action is reported with line:column and a caret\n"
        "where reading stopped, and the others are shown all the same.\n\n"
        "  orvact show 'PanLeft (Camera: 7, Speed: 3)'\n"
        "  orvact show --file examples/site.actions\n"
        "  orvact show - < actions.log");
}

void CommandLine::AddList()
{
    CLI::App* command = app.add_subcommand("list", "Lists classes, actions or enums");
    command->add_option("WHAT", list.what, "classes, actions or enums")
        ->required()
        ->check(CLI::IsMember({"classes", "actions", "enums"}));
    command->add_option("--class", list.className, "Actions of this class only")->type_name("NAME");
    command->add_flag("--json", list.json, "As JSON, with all that is known");
}

void CommandLine::AddDescribe()
{
    CLI::App* command = app.add_subcommand("describe", "A page about one action: parameters, values and an example");
    command->add_option("ACTION", described, "Its name in any case, or its code")->required();
}

int Perform(const CommandLine& line)
{
    if (line.app.got_subcommand("list")) return List(line.list);
    if (line.app.got_subcommand("describe")) return Describe(line.described);
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
    PrintError("orvact: " + std::string(answer.what()) + "\nSee orvact --help.\n");
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
