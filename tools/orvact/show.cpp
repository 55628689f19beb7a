// Reads action texts and says what they are.
#include "action_page.h"
#include "action_reader.h"
#include "commands.h"
#include "console.h"
#include "report.h"

namespace {

struct Totals {
    std::size_t read = 0;
    std::size_t unreadable = 0;
    bool inputFailed = false;
};

void ShowAction(const Action& action, const std::string& label, Totals& totals)
{
    if (totals.read++ > 0) Print("\n");
    PrintAction(action, label);
}

// All that comes from one reader.
void ShowAll(ActionReader& reader, Totals& totals)
{
    Action action;
    for (Record record; reader.Next(action, record);) {
        ShowAction(action, std::to_string(record.place.number), totals);
        if (reader.MayWait()) FlushOutput();
    }
    totals.unreadable += reader.unreadable();
    totals.inputFailed = totals.inputFailed || reader.failed();
}

void ShowFile(const std::string& path, Totals& totals)
{
    ActionReader reader;
    if (reader.Open({path}, nullptr)) return ShowAll(reader, totals);
    totals.inputFailed = true;
}

void ShowText(const std::string& text, std::size_t number, Totals& totals)
{
    ActionReader reader;
    Record record;
    record.bytes = text;
    record.place.number = number;
    if (const Action action = reader.ReadText(record)) ShowAction(action, std::to_string(number), totals);
    totals.unreadable += reader.unreadable();
}

}  // namespace

int Show(const ShowOptions& options)
{
    Totals totals;
    std::size_t argument = 0;
    for (const std::string& text : options.texts) {
        ++argument;
        if (text == "-" || IsFile(text)) {
            ShowFile(text, totals);
        } else {
            ShowText(text, argument, totals);
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
