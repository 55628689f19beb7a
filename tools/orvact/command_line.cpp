#include "command_line.h"

#include <OrvActions.h>

#include "build.h"
#include "console.h"
#include "event_groups.h"
#include "help.h"
#include "settings.h"
#include "text.h"

namespace {

// The version of the tool, and that of the interface of the library that it runs with.
std::string Version()
{
    return "orvact " ORV_ACTIONS_VERSION_TEXT "\ninterface " + std::to_string(OrvAct_InterfaceVersion()) + " of " +
           OrvAct_InterfaceDate() + "\nbuild " ORV_BUILD;
}

}  // namespace

CommandLine::CommandLine()
{
    app.require_subcommand(1);
    app.allow_windows_style_options(false);  // the same command lines mean the same on both systems
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
    AddCatalogue();
    AddLint(app, lint);
    AddCommon(app.get_subcommand("lint"));
}

void CommandLine::AddCommon(CLI::App* command)
{
    command->add_option("-o,--output", output, "The results go into this file, whole or not at all")->type_name("FILE");
    AddReporting(command);
}

void CommandLine::AddReporting(CLI::App* command)
{
    command->add_option("--color", colours, "When there are colours; auto is on a terminal")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    command->add_option("--report", report, "How standard error is written: for people, or a JSON object a line")
        ->check(CLI::IsMember({"text", "json"}));
}

void CommandLine::AddReading(CLI::App* command)
{
    command->add_option("--encoding", encoding, "In which bytes texts come in; UTF-8, or UTF-16 with a byte order mark")
        ->check(CLI::IsMember({"utf-8", "utf-16", "utf-16le", "utf-16be", "latin-1"}, CLI::ignore_case));
    command->add_flag("--strict", settings.strict,
                      "What is odd about an action is an error: names that are unknown, values that do not fit");
    command->add_flag("--names", settings.names, "Values of enums by name, in action text that is read and written");
}

void CommandLine::AddInput(CLI::App* command, std::string& form, std::vector<std::string>& files)
{
    command->add_option("--from", form, "The form of the input; recognised when not given")->type_name("FORM");
    command->add_option("FILE", files, "The input; standard input when not given or -")->type_name("");
    AddReading(command);
}

void CommandLine::AddForce(CLI::App* command)
{
    command->add_flag("--force", settings.force, "Write binary forms to a terminal as well");
}

void CommandLine::Settle() const
{
    settings.jsonReport = report == "json";
    UseColours(colours == "always" ? Colours::Always : colours == "never" ? Colours::Never : Colours::Auto);
    const std::string bytes = LowerCaseAscii(encoding);
    if (bytes == "utf-8") settings.encoding = Encoding::Utf8;
    if (bytes == "utf-16" || bytes == "utf-16le") settings.encoding = Encoding::Utf16Little;
    if (bytes == "utf-16be") settings.encoding = Encoding::Utf16Big;
    if (bytes == "latin-1") settings.encoding = Encoding::Latin1;
}

void CommandLine::AddShow()
{
    CLI::App* command = app.add_subcommand("show", "Reads action texts and says what they are");
    command
        ->add_option("TEXT", show.texts,
                     "An action text, in quotes for the shell, or a file of actions; - for standard input")
        ->type_name("");
    command->add_option("--file", show.files, "A file of actions; may be given several times")
        ->type_name("FILE")
        ->allow_extra_args(false);
    AddReading(command);
    AddCommon(command);
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
    AddCommon(command);
    command->footer(kListFooter);
}

void CommandLine::AddDescribe()
{
    CLI::App* command = app.add_subcommand("describe", "A page about an action, a class, an enum, a type or a column");
    command->add_option("NAME", described, "Its name in any case; of an action also its code")->required();
    AddCommon(command);
    command->footer(kDescribeFooter);
}

void CommandLine::AddCatalogue()
{
    CLI::App* command = app.add_subcommand("catalogue", "Writes the catalogue as pages for a browser");
    command->add_option("-o,--output", catalogue.folder, "The folder of the pages, made if there is none")
        ->type_name("DIR")
        ->required();
    command->add_option("--extension", catalogue.extensions, "An extension file whose content is shown as well")
        ->type_name("FILE")
        ->allow_extra_args(false);
    AddReporting(command);
    command->footer(kCatalogueFooter);
}

void CommandLine::AddConvert()
{
    CLI::App* command = app.add_subcommand("convert", "Reads actions in one form and writes them in another");
    command->add_option("--to", convert.to, "The form of the output, or csv")->type_name("FORM")->required();
    AddInput(command, convert.from, convert.files);
    AddForce(command);
    AddCommon(command);
    command->footer(FormsHelp() + kConvertFooter);
}

void CommandLine::AddDump()
{
    CLI::App* command = app.add_subcommand("dump", "Shows the binary form byte by byte, even if it is damaged");
    AddInput(command, dump.from, dump.files);
    AddCommon(command);
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
    AddInput(command, match.from, match.files);
    command->add_option("--to", match.to, "The form of the output; technical when not given")->type_name("FORM");
    command->add_flag("--explain", match.explain, "Say why each of the others does not match, on standard error");
    AddForce(command);
    AddCommon(command);
    command->footer(kMatchFooter);
}

void CommandLine::AddEvents()
{
    CLI::App* command = app.add_subcommand("events", "Stores actions in an event database and reads them back");
    command->require_subcommand(1);
    command->footer(kEventsFooter);

    CLI::App* storing = command->add_subcommand("store", "Stores actions; makes the database when there is none");
    AddDatabase(storing, store.database);
    AddInput(storing, store.from, store.files);
    AddCommon(storing);
    CLI::Option* recorder =
        storing->add_option("--recorder", store.recorder, "Who stores, for a server; the host's name when not given")
            ->type_name("NAME");
    storing
        ->add_flag("--numbered", store.numbered,
                   "The input begins with the recorder's first event; what is on the server already is passed over")
        ->needs(recorder);
    storing->add_flag("--retry", store.retry, "When the server goes away, wait for it and go on");
    storing->footer(kEventsStoreFooter);

    AddEventsList(command);
    AddEventsFollow(command);
    AddEventsReport(command);

    CLI::App* showing = command->add_subcommand("show", "Shows one event: the action, its columns and description");
    AddDatabase(showing, event.database);
    showing->add_option("ID", event.id, "The number of the event")->type_name("")->required();
    showing->add_flag("--names", settings.names, "Values of enums by name");
    AddCommon(showing);
    showing->footer(kEventsShowFooter);

    CLI::App* pruning = command->add_subcommand("prune", "Removes old events");
    AddDatabase(pruning, prune.database);
    pruning->add_option("--keep", prune.keep, "What is younger than this age stays: 90d")->type_name("AGE")->required();
    AddCommon(pruning);
    pruning->footer(kEventsPruneFooter);
}

void CommandLine::AddDatabase(CLI::App* command, std::string& database)
{
    command->add_option("DB", database, "The database: a file, or a server, postgresql://USER@HOST/NAME")
        ->type_name("")
        ->required();
}

// Which events.
void CommandLine::AddEventFilters(CLI::App* command)
{
    AddDatabase(command, events.database);
    command->add_option("--code", events.codes, "Actions of this code or name; may be given several times")
        ->type_name("CODE")
        ->allow_extra_args(false);
    command->add_option("--class", events.classes, "Actions of this class; may be given several times")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command->add_option("--match", events.pattern, "Actions that match: a match action, or a file of them")
        ->type_name("PATTERN");
}

void CommandLine::AddPeriod(CLI::App* command)
{
    command->add_option("--id", events.ids, "The events of these numbers: 5, 5..9, 5.. or ..9")->type_name("A..B");
    command
        ->add_option("--since", events.since,
                     "Stored at this time or later: 2026-11-21T07:30 (UTC), 2026-11-21T07:30+02:00, or an age: 15m")
        ->type_name("TIME");
    command->add_option("--until", events.until, "Stored at this time or before")->type_name("TIME");
    command->add_option("--limit", events.limit, "The newest N of them only")->type_name("N");
}

void CommandLine::AddEventsList(CLI::App* to)
{
    CLI::App* command = to->add_subcommand("list", "Lists events, oldest first");
    AddEventFilters(command);
    AddPeriod(command);
    CLI::Option* form =
        command->add_option("--to", events.to, "The actions in a form, instead of a list")->type_name("FORM");
    CLI::Option* json =
        command->add_flag("--json", events.json, "With number, time, all columns and the parameters, as JSON");
    CLI::Option* csv = command->add_flag("--csv", events.csv, "The same as a table")->excludes(json);
    command->add_flag("--count", events.count, "How many they are")->excludes(json)->excludes(csv)->excludes(form);
    command->add_option("--group-by", events.groupBy, "How many they are by class, action, hour, day, user or channel")
        ->check(CLI::IsMember(EventGroups::Keys()))
        ->type_name("KEY")
        ->excludes(form);
    form->excludes(json)->excludes(csv);
    command->add_flag("--names", settings.names, "Values of enums by name");
    AddForce(command);
    AddCommon(command);
    command->footer(kEventsListFooter);
}

void CommandLine::AddEventsFollow(CLI::App* to)
{
    CLI::App* command = to->add_subcommand("follow", "Prints what is added as it comes, until Ctrl+C");
    AddEventFilters(command);
    command->add_option("--limit", events.limit, "Begin with the newest N that are there")->type_name("N");
    CLI::Option* form = command->add_option("--to", events.to, "The actions in a form of lines")->type_name("FORM");
    command->add_flag("--json", events.json, "An event a line as JSON, with all columns and the parameters")
        ->excludes(form);
    command->add_flag("--names", settings.names, "Values of enums by name");
    AddCommon(command);
    command->footer(kEventsFollowFooter);
}

void CommandLine::AddEventsReport(CLI::App* to)
{
    CLI::App* command = to->add_subcommand("report", "Writes a page about events to be looked at in a browser");
    AddEventFilters(command);
    AddPeriod(command);
    command->add_flag("--names", settings.names, "Values of enums by name");
    AddCommon(command);
    command->footer(kEventsReportFooter);
}
