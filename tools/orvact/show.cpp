// Reads action texts and tells what they are.
#include <cerrno>
#include <cstring>

#include "action_view.h"
#include "commands.h"
#include "console.h"
#include "fault.h"
#include "lines.h"
#include "table.h"
#include "text.h"

namespace {

struct Totals {
    std::size_t read = 0;
    std::size_t unreadable = 0;
    bool inputFailed = false;
};

struct Place {
    std::string source;  // "" for an argument
    std::size_t line;
};

void Indented(const char* label, const std::string& text)
{
    Print("    " + Painted(Tone::Quiet, label) + text + "\n");
}

// The catalogue's name, or the own name of an action that it does not know.
std::string Identity(const Action& action, const ActionView* known)
{
    const bool match = action->GetMessageKind() == ORV_MESSAGE_MATCH_ACTION;
    const std::string name = Visible(Utf8FromWide(action->GetActionName()));
    const std::string kind = match ? "match action" : "action";
    if (!known) return Painted(Tone::Name, name) + ", " + kind + " unknown to the catalogue";
    return Painted(Tone::Name, name) + ", " + kind + " " + std::to_string(known->code) + " of class " +
           known->className;
}

void ShowAction(const Action& action, std::size_t line)
{
    const ActionView* known = FindAction(action->GetActionCode());
    Print(Painted(Tone::Quiet, std::to_string(line)) + "  " + Identity(action, known) + "\n");
    if (action->GetMessageKind() == ORV_MESSAGE_MATCH_ACTION) {
        const std::string description = MatchDescription(action);
        if (!description.empty()) Indented("description: ", Visible(description));
    }
    Table table(6);
    for (const StoredParameter& parameter : ParametersOf(action, known)) {
        table.Row({parameter.name, parameter.type, parameter.view, parameter.value});
    }
    table.Write();
    Indented("text:  ", Visible(Utf8FromWide(TextOf(action, false))));
    Indented("plain: ", Visible(Utf8FromWide(TextOf(action, true))));
}

void Report(const Place& place, std::size_t column, const std::string& reason)
{
    PrintError((place.source.empty() ? "" : place.source + ":") + std::to_string(place.line) + ":" +
               std::to_string(column) + ": " + reason + "\n");
}

void ShowText(const std::string& bytes, const Place& place, Totals& totals)
{
    bool clean = true;
    const std::u16string text = WideFromUtf8(bytes, clean);
    std::uint32_t consumed = 0;
    const Action action(ReadText(text, consumed));
    if (!action) {
        ++totals.unreadable;
        Report(place, ColumnOf(text, consumed), ReasonFor(text, consumed));
        PrintError(WithCaret(text, consumed));
        return;
    }
    if (totals.read++ > 0) Print("\n");
    ShowAction(action, place.line);
    if (!clean) Indented("note:  ", "the text is not UTF-8 everywhere; what is not became U+FFFD");
    const std::string rest = Utf8FromWide(std::u16string_view(text).substr(consumed));
    if (rest.find_first_not_of(" \t") != std::string::npos) Indented("rest:  ", Shortened(Visible(rest), 80));
}

bool IsSkipped(const std::string& line)
{
    const std::size_t first = line.find_first_not_of(" \t");
    return first == std::string::npos || line[first] == '#';
}

void ShowLines(std::FILE* file, const std::string& source, Totals& totals)
{
    LineReader reader(file);
    std::string line;
    bool tooLong = false;
    for (Place place{source, 1}; reader.Next(line, tooLong); ++place.line) {
        if (tooLong) {
            ++totals.unreadable;
            Report(place, 1, "the line is longer than " + std::to_string(LineReader::kLongest) + " bytes");
        } else if (!IsSkipped(line)) {
            ShowText(line, place, totals);
        }
    }
    if (!reader.failed()) return;
    totals.inputFailed = true;
    PrintError("orvact: " + source + ": " + std::strerror(errno) + "\n");
}

void ShowFile(const std::string& path, Totals& totals)
{
    std::FILE* file = OpenFile(path);
    if (!file) {
        totals.inputFailed = true;
        PrintError("orvact: " + path + ": " + std::strerror(errno) + "\n");
        return;
    }
    ShowLines(file, path, totals);
    std::fclose(file);
}

}  // namespace

int Show(const ShowOptions& options)
{
    Totals totals;
    std::size_t argument = 0;
    for (const std::string& text : options.texts) {
        ++argument;
        if (text == "-") {
            ShowLines(stdin, "stdin", totals);
        } else {
            ShowText(text, {"", argument}, totals);
        }
    }
    for (const std::string& path : options.files) ShowFile(path, totals);
    const std::size_t all = totals.read + totals.unreadable;
    if (all > 1) {
        Print((totals.read > 0 ? "\n" : "") + std::to_string(totals.read) + " of " + std::to_string(all) +
              " texts read\n");
    }
    if (totals.inputFailed) return kUsage;
    return totals.unreadable > 0 ? kUnreadable : kDone;
}
