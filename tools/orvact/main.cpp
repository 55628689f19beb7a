// orvact: shows, converts, matches and stores actions. It uses the public interface of the library only.
#include <OrvActions.h>
#include <CLI/CLI.hpp>

#include "commands.h"
#include "console.h"
#include "help.h"

namespace {

struct CommandLine {
    CLI::App app{"Shows, converts, matches and stores actions, and lists what the catalogue holds.", "orvact"};
    ShowOptions show;
    ListOptions list;
    std::string described;
    ConvertOptions convert;
    DumpOptions dump;

    CommandLine();
    void AddShow();
    void AddList();
    void AddDescribe();
    void AddConvert();
    void AddDump();
};

CommandLine::CommandLine()
{
    app.require_subcommand(1);
    app.set_help_flag("-h,--help", "This page, or that of a command");
    const std::string version =
        "orvact, interface " + std::to_string(OrvAct_InterfaceVersion()) + " of " + OrvAct_InterfaceDate();
    app.set_version_flag("--version", version)->description("The version of the interface and its date");
    app.footer(kHelpFooter);
    AddShow();
    AddList();
    AddDescribe();
    AddConvert();
    AddDump();
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
    command->footer(kShowFooter);
}

void CommandLine::AddList()
{
    CLI::App* command = app.add_subcommand("list", "Lists classes, actions or enums");
    command->add_option("WHAT", list.what, "classes, actions or enums")
        ->required()
        ->check(CLI::IsMember({"classes", "actions", "enums"}));
    command->add_option("--class", list.className, "Actions of this class only")->type_name("NAME");
    command->add_flag("--json", list.json, "As JSON, with all that is known");
    command->footer(kListFooter);
}

void CommandLine::AddDescribe()
{
    CLI::App* command = app.add_subcommand("describe", "A page about one action: parameters, values and an example");
    command->add_option("ACTION", described, "Its name in any case, or its code")->required();
    command->footer(kDescribeFooter);
}

void AddFrom(CLI::App* command, std::string& form)
{
    command->add_option("--from", form, "The form of the input; found out when not given")->type_name("FORM");
}

void AddFile(CLI::App* command, std::string& file)
{
    command->add_option("FILE", file, "The input; standard input when not given or -")->type_name("");
}

void CommandLine::AddConvert()
{
    CLI::App* command = app.add_subcommand("convert", "Reads actions in one form and writes them in another");
    AddFrom(command, convert.from);
    command->add_option("--to", convert.to, "The form of the output")->type_name("FORM")->required();
    AddFile(command, convert.file);
    command->footer(FormsHelp() + kConvertFooter);
}

void CommandLine::AddDump()
{
    CLI::App* command = app.add_subcommand("dump", "Shows the binary form byte by byte, also of damaged input");
    AddFrom(command, dump.from);
    AddFile(command, dump.file);
    command->footer(kDumpFooter);
}

int Perform(const CommandLine& line)
{
    if (line.app.got_subcommand("list")) return List(line.list);
    if (line.app.got_subcommand("describe")) return Describe(line.described);
    if (line.app.got_subcommand("convert")) return Convert(line.convert);
    if (line.app.got_subcommand("dump")) return Dump(line.dump);
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
    const auto commands = app.get_subcommands();
    PrintError("orvact: " + std::string(answer.what()) + "\nSee orvact " +
               (commands.empty() ? "" : commands.front()->get_name() + " ") + "--help.\n");
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
