// Reads actions in one form and writes them in another.
#include "action_reader.h"
#include "commands.h"
#include "console.h"

int Convert(const ConvertOptions& options)
{
    bool soundSource = true;
    bool soundTarget = true;
    const Form* source = SourceForm(options.from, soundSource);
    const Form* target = TargetForm(options.to, soundTarget);
    ActionReader reader;
    if (!soundSource || !soundTarget || !reader.Open(options.file, source)) return kUsage;

    std::size_t unwritten = 0;
    Action action{nullptr};
    for (Record record; reader.Next(action, record);) {
        const Encoded encoded = target->write(action);
        if (!encoded.problem.empty()) {
            ++unwritten;
            reader.Report(record, encoded.problem);
            continue;
        }
        Print(Delimited(*target, encoded.record));
        if (reader.MayWait()) FlushOutput();
        if (target->read && !target->faithful) {
            const Decoded again = target->read(encoded.record);
            if (!again.action || !SameAction(action, again.action)) {
                reader.Report(record, std::string("note: what was written in form ") + target->name +
                                          " does not read back as the same action");
            }
        }
    }
    if (reader.failed()) return kUsage;
    return reader.unreadable() + unwritten > 0 ? kUnreadable : kDone;
}
