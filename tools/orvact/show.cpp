// Reads action texts and tells what they are.
#include "action_page.h"
#include "action_view.h"
#include "commands.h"
#include "console.h"
#include "fault.h"
#include "lines.h"
#include "report.h"
#include "text.h"

namespace {

struct Totals {
    std::size_t read = 0;
    std::size_t unreadable = 0;
    bool inputFailed = false;
};

void ShowText(const std::string& bytes, const Place& place, Totals& totals)
{
    bool clean = true;
    const std::u16string text = WideFromUtf8(bytes, clean);
    std::uint32_t consumed = 0;
    const Action action(ReadText(text, consumed));
    if (!action) {
        ++totals.unreadable;
        ReportAt(place, ColumnOf(text, consumed), ReasonFor(text, consumed), WithCaret(text, consumed));
        return;
    }
    if (totals.read++ > 0) Print("\n");
    PrintAction(action, std::to_string(place.line));
    if (!clean) Indented("note:  ", "the text is not UTF-8 everywhere; what is not became U+FFFD");
    const std::string rest = Utf8FromWide(std::u16string_view(text).substr(consumed));
    if (rest.find_first_not_of(" \t") != std::string::npos) Indented("rest:  ", Shortened(Visible(rest), 80));
}

void ShowLines(std::FILE* file, const std::string& source, Totals& totals)
{
    LineReader reader(file);
    std::string line;
    bool tooLong = false;
    for (Place place{source, 1}; reader.Next(line, tooLong); ++place.line) {
        if (tooLong) {
            ++totals.unreadable;
            ReportAt(place, 1, "the line is longer than " + std::to_string(LineReader::kLongest) + " bytes");
        } else if (!IsSkipped(line)) {
            ShowText(line, place, totals);
        }
    }
    if (!reader.failed()) return;
    totals.inputFailed = true;
    ReportFile(source);
}

void ShowFile(const std::string& path, Totals& totals)
{
    std::FILE* file = OpenFile(path);
    if (!file) {
        totals.inputFailed = true;
        ReportFile(path);
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
