// Reads actions in one form and writes them in another.
#include "action_reader.h"
#include "commands.h"
#include "console.h"
#include "csv.h"

int Convert(const ConvertOptions& options)
{
    bool soundSource = true;
    bool soundTarget = true;
    const bool csv = IsCsv(options.to);
    const Form* source = SourceForm(options.from, soundSource);
    const Form* target = csv ? nullptr : TargetForm(options.to, soundTarget);
    ActionReader reader;
    if (!soundSource || !soundTarget || (target && !MayGoOut(*target)) || !reader.Open(options.files, source)) {
        return kUsage;
    }
    std::size_t unwritten = 0;
    CsvTable table;
    Action action;
    for (Record record; reader.Next(action, record);) {
        if (csv) {
            table.Add(action);
            continue;
        }
        unwritten += !WriteRecord(*target, action, record.place);
        if (reader.MayWait()) FlushOutput();
    }
    if (csv) table.Write();
    if (reader.failed()) return kUsage;
    return reader.unreadable() + unwritten > 0 ? kUnreadable : kDone;
}
