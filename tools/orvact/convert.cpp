// Reads actions in one form and writes them in another.
#include "action_reader.h"
#include "action_writer.h"
#include "commands.h"
#include "console.h"

int Convert(const ConvertOptions& options)
{
    bool sound = true;
    const Form* source = SourceForm(options.from, sound);
    ActionWriter writer;
    ActionReader reader;
    if (!sound || !writer.Open(options.to) || !reader.Open(options.files, source)) return kUsage;

    std::size_t unwritten = 0;
    Action action;
    for (Record record; reader.Next(action, record);) {
        unwritten += !writer.Write(action, record.place);
        if (reader.MayWait()) FlushOutput();
    }
    writer.Finish();
    if (reader.failed()) return kUsage;
    return reader.unreadable() + unwritten > 0 ? kUnreadable : kDone;
}
