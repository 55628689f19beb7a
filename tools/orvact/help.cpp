#include "help.h"

#include "csv.h"
#include "forms.h"
#include "text.h"

const char* const kHelpFooter =
    "Exit codes: 0 success, 1 nothing found (match, events list) or a warning or an error (lint), 2 wrong\n"
    "usage, an unknown name, input that cannot be opened or output that cannot be written, 3 some of the\n"
    "input is no action, 130 interrupted. Results go to standard output, everything else to standard\n"
    "error; both are UTF-8. Colours appear on a terminal, and never when NO_COLOR is set.\n\n"
    "A line of standard error begins with file, line and column. With --report json it is an object with the\n"
    "members file, line (or action), column, severity, code, message and suggestion.";

const char* const kShowFooter =
    "An argument that names a file is read as one, in whichever form. In files and standard input blank lines\n"
    "and lines that begin with # are skipped. A text that is no action is reported with line:column and a\n"
    "caret where reading stopped, and the others are still shown. Where an action differs from what its text\n"
    "seems to say there is a note; with --strict it is an error.\n\n"
    "  orvact show 'PanLeft (Camera: 7, Speed: 3)'\n"
    "  orvact show --names 'DigitalInput (Contact: 3, State: High)'\n"
    "  orvact show examples/site.actions\n"
    "  orvact show - < actions.log";

const char* const kListFooter =
    "  orvact list actions --class CameraControl\n"
    "  orvact list actions --extension\n"
    "  orvact list enums --json";

const char* const kDescribeFooter =
    "  orvact describe LenelAccessEvent\n"
    "  orvact describe DigitalInputState\n"
    "  orvact describe MediaChannel\n"
    "  orvact describe 1102";

const char* const kCatalogueFooter =
    "A page for each action, class and enum, with examples in every form, in C and in C++; every page has a\n"
    "search. They need no server: open index.html. What extension files add, those beside this program and\n"
    "those given here, is marked.\n\n"
    "  orvact catalogue -o catalogue\n"
    "  orvact catalogue -o catalogue --extension examples/plcGate.xml";

const char* const kConvertFooter =
    "\nWithout --from the form is recognised by the first bytes, or the first line that is not blank or a\n"
    "comment. Input that is no action is reported with its line, or with its number in a binary stream, and\n"
    "left out; so is an action that the form cannot hold. The exit code is 3 then. A line break inside a text\n"
    "is written after a backslash, and is read like that.\n\n"
    "  orvact convert --to binary examples/site.actions > site.bin\n"
    "  orvact convert --to technical site.bin\n"
    "  echo 'PanLeft (Camera: 7)' | orvact convert --to json\n"
    "  orvact convert --to csv --names -o site.csv examples/site.actions";

const char* const kDumpFooter =
    "Each field with its offset, its bytes and what they mean, and at the end what the library reads.\n"
    "Damaged input is shown up to the damage; standard error says where and why it stops, and the exit code\n"
    "is 3. Offsets count from the start of a binary input, else from the start of the action.\n"
    "Input in another form is turned into the binary form first.\n\n"
    "  orvact dump site.bin\n"
    "  echo 'PanLeft (Camera: 7)' | orvact dump\n"
    "  echo '03000000 02000000 41000000 01000000' | orvact dump";

const char* const kMatchFooter =
    "Forms are those of orvact convert. The exit code is 1 if no action matches. A pattern that cannot be\n"
    "read ends the command: without it the answer would be another.\n\n"
    "  orvact match '@ PanLeft (Camera: 7)' examples/site.actions\n"
    "  orvact match rules.actions site.bin --to json\n"
    "  orvact match --explain '@ CameraOn (Camera: 8)' examples/site.actions";

const char* const kEventsFooter =
    "The database is an SQLite file, or a PostgreSQL server where postgresql://USER@HOST/NAME stands in place\n"
    "of a file name; a password comes from ~/.pgpass. Its table is Events: Id, Stored (UTC), Name, Code, a\n"
    "column for each of the event record, and the binary form of the action, Image. See docs/event-records.md.\n\n"
    "  orvact events store site.db examples/site.actions\n"
    "  orvact events list site.db --class CameraControl\n"
    "  orvact events show site.db 3";

const char* const kEventsStoreFooter =
    "What is no action, what holds text that is no part of one, and what is a match action is reported with\n"
    "its place and left out, with exit code 3. Events are stored in transactions of up to 15,000; from a pipe\n"
    "they are in the database as soon as the pipe is empty. Ctrl+C stores what was read and ends with exit\n"
    "code 130; whatever else interrupts loses the open transaction at most. A server keeps the numbers of a\n"
    "recorder's events: with --numbered the same command goes on after whatever has stopped it.\n\n"
    "  orvact events store site.db examples/site.actions\n"
    "  server-log | orvact events store site.db\n"
    "  orvact events store postgresql:///site --recorder gate --numbered --retry gate.bin";

const char* const kEventsListFooter =
    "An event is listed when it fits all of --id, --code, --class, --since, --until and --match. Exit code 1\n"
    "when none does. --json is an array of objects with Id, Stored, Code, Name, the columns (null where\n"
    "empty) and Parameters as in the JSON form; --csv is the same as a table, with a column for each parameter\n"
    "that occurs. --group-by goes with them too.\n\n"
    "  orvact events list site.db --since 2h --limit 20\n"
    "  orvact events list site.db --code PanLeft --code 1122\n"
    "  orvact events list site.db --match '@ LogNPRRecognition (PlateNo: \"KA-OR 143\")'\n"
    "  orvact events list site.db --group-by class --since 1d\n"
    "  orvact events list site.db --id 100..200 --csv -o some.csv\n"
    "  orvact events list site.db --to technical > site.actions";

const char* const kEventsFollowFooter =
    "Looks five times a second; a server tells by itself. Ends with Ctrl+C, or when nobody reads the\n"
    "results any more.\n\n"
    "  orvact events follow site.db --class CameraControl --limit 10\n"
    "  orvact events follow site.db --json | my-dashboard";

const char* const kEventsReportFooter =
    "One HTML file that needs nothing else, no network either: the events over time by class, the busiest\n"
    "actions, channels and users, the longest gaps, and a table to search in.\n\n"
    "  orvact events report site.db -o report.html\n"
    "  orvact events report site.db --since 7d --class CameraControl -o week.html";

const char* const kEventsShowFooter = "  orvact events show site.db 3";

const char* const kEventsPruneFooter =
    "A file gives up single events, in small steps; a server drops whole months, once the youngest event of\n"
    "a month is older than that.\n\n"
    "  orvact events prune site.db --keep 90d\n"
    "  orvact events prune postgresql:///site --keep 52w";

std::string FormsHelp()
{
    std::string help = "Forms:\n";
    for (const Form& form : Forms()) {
        const char* layout = form.layout == Layout::Lines       ? ", one action a line"
                             : form.layout == Layout::Documents ? ", one action a line or over several lines"
                             : form.layout == Layout::Frames    ? ", each action after its size (32 bits, little-endian)"
                                                                : "";
        help += "  " + Padded(form.name, 12) + form.help + layout + (form.read ? "" : "; only written") +
                (form.write ? "" : "; only read") + "\n";
    }
    return help + "  " + Padded(kCsv, 12) +
           "a table: name, code, and a column for each parameter that occurs; only written\n";
}
