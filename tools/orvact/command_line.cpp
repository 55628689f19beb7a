#include "command_line.h"

#include <OrvActions.h>

#include "build.h"
#include "help.h"

namespace {

// The version of the tool's own making and the interface of the library that it runs with.
std::string Version()
{
    return "orvact " ORV_ACTIONS_VERSION_TEXT "\ninterface " + std::to_string(OrvAct_InterfaceVersion()) + " of " +
           OrvAct_InterfaceDate() + "\nbuild " ORV_BUILD;
}

void AddFrom(CLI::App* command, std::string& form)
{
    command->add_option("--from", form, "The form of the input; found out when not given")->type_name("FORM");
}

void AddFile(CLI::App* command, std::string& file)
{
    command->add_option("FILE", file, "The input; standard input when not given or -")->type_name("");
}

}  // namespace

CommandLine::CommandLine()
{
    app.require_subcommand(1);
    app.set_help_flag("-h,--help", "This page, or that of a command");
    app.set_version_flag("--version", Version())->description("The version, that of the interface, and the build");
    app.footer(kHelpFooter);
    AddShow();
    AddList();
    AddDescribe();
    AddConvert();
    AddDump();
    AddMatch();
    AddEvents();
    AddLint(app, lint);
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
    command->add_flag("--hesk", list.hesk, "Which actions convert from and to the sibling product's text, and how");
    command->add_flag("--extension", list.extension, "Only what extension files beside this program have added");
    command->add_flag("--json", list.json, "As JSON, with all that is known");
    command->footer(kListFooter);
}

void CommandLine::AddDescribe()
{
    CLI::App* command = app.add_subcommand("describe", "A page about one action: parameters, values and an example");
    command->add_option("ACTION", described, "Its name in any case, or its code")->required();
    command->footer(kDescribeFooter);
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

void CommandLine::AddMatch()
{
    CLI::App* command = app.add_subcommand("match", "Prints the actions that any of the match actions matches");
    command
        ->add_option("PATTERNS", match.patterns,
                     "A file of match actions, - for standard input, or the text of one, beginning with @")
        ->type_name("")
        ->required();
    AddFile(command, match.file);
    AddFrom(command, match.from);
    command->add_option("--to", match.to, "The form of the output; technical when not given")->type_name("FORM");
    command->add_flag("--explain", match.explain, "Tell why each of the others is refused, on standard error");
    command->footer(kMatchFooter);
}

void CommandLine::AddEvents()
{
    CLI::App* command = app.add_subcommand("events", "Stores actions in an event database and reads them back");
    command->require_subcommand(1);
    command->footer(kEventsFooter);
    const auto addDatabase = [](CLI::App* to, std::string& database) {
        to->add_option("DB", database, "The database, a file")->type_name("")->required();
    };

    CLI::App* storing = command->add_subcommand("store", "Stores actions; makes the database when there is none");
    addDatabase(storing, store.database);
    AddFile(storing, store.file);
    AddFrom(storing, store.from);
    storing->footer(kEventsStoreFooter);

    CLI::App* listing = command->add_subcommand("list", "Lists events, oldest first");
    addDatabase(listing, events.database);
    listing->add_option("--code", events.codes, "Actions of this code or name; may be given several times")
        ->type_name("CODE")
        ->allow_extra_args(false);
    listing->add_option("--class", events.classes, "Actions of this class; may be given several times")
        ->type_name("NAME")
        ->allow_extra_args(false);
    listing->add_option("--since", events.since, "Stored at this time or later: 2026-11-21T07:30 (UTC), or an age: 15m")
        ->type_name("TIME");
    listing->add_option("--match", events.pattern, "Actions that match: a match action, or a file of them")
        ->type_name("PATTERN");
    listing->add_option("--limit", events.limit, "The newest N of them only")
        ->type_name("N")
        ->check(CLI::PositiveNumber);
    listing->add_option("--to", events.to, "The actions in a form, instead of a list")->type_name("FORM");
    listing->footer(kEventsListFooter);

    CLI::App* showing = command->add_subcommand("show", "Shows one event: the action, its columns and description");
    addDatabase(showing, event.database);
    showing->add_option("ID", event.id, "The number of the event")->type_name("")->required();
    showing->footer(kEventsShowFooter);
}
