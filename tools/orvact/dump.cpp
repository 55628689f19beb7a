// The binary form as annotated bytes, up to the first damage.
#include "action_reader.h"
#include "binary_walk.h"
#include "bytes.h"
#include "commands.h"
#include "console.h"

namespace {

constexpr std::size_t kBytesInRow = 8;

// In rows of eight bytes; the meaning stands beside the first.
void PrintRow(std::string_view bytes, std::uint64_t offset, const std::string& meaning)
{
    std::size_t at = 0;
    do {
        std::string line = Painted(Tone::Quiet, Hex(offset + at, 8)) + "  ";
        const std::string_view row = bytes.substr(at, kBytesInRow);
        for (const char byte : row) {
            AppendHex(line, static_cast<unsigned char>(byte));
            line += ' ';
        }
        if (at == 0 && !meaning.empty()) line += std::string(3 * (kBytesInRow - row.size()) + 1, ' ') + meaning;
        line.erase(line.find_last_not_of(' ') + 1);
        Print(line + "\n");
        at += row.size();
    } while (at < bytes.size());
}

// What the library makes of the bytes, sound or not.
void PrintReading(const std::string& bytes)
{
    const Action action = Action::TryFromBinary(bytes);
    if (!action) return Print(Painted(Tone::Quiet, "reads as nothing\n"));
    const Encoded text = WriteTechnical(action);
    Print(Painted(Tone::Quiet, "reads as ") + (text.problem.empty() ? text.record : "an action that " + text.problem) +
          "\n");
}

// False if the bytes are damaged or more follow, which is reported.
bool DumpAction(const Record& record, const std::string& bytes, std::uint64_t offset)
{
    const BinaryWalk walk = WalkBinary(bytes, true);
    for (const BinaryField& field : walk.fields) {
        if (field.opensRecord) Print("\n");
        PrintRow(std::string_view(bytes).substr(field.offset, field.size), offset + field.offset, field.meaning);
    }
    const std::string_view rest = std::string_view(bytes).substr(walk.sibling ? 4 : walk.end);
    if (!rest.empty()) {
        const std::uint64_t at = offset + bytes.size() - rest.size();
        PrintRow(rest, at, walk.sibling ? "known to its library only" : "not read");
    }
    PrintReading(bytes);
    std::string problem = walk.problem;
    if (problem.empty() && !rest.empty() && !walk.sibling) problem = "the action is complete, and more bytes follow";
    if (!problem.empty()) {
        Report(record.place, Severity::Error,
               {"damaged", "stops at " + Hex(offset + walk.end, 8) + ": " + problem, {}, 0, 0, {}});
    }
    return problem.empty();
}

// The binary form of a record; what cannot be turned into it is reported.
bool BytesOf(ActionReader& reader, const Record& record, std::string& bytes)
{
    const Form& form = reader.form();
    // The bytes as they are, even if no action can be read from them.
    if (form.image && form.image(record.bytes, bytes)) return true;
    const Action action = reader.Read(record);
    if (action) bytes = WriteBinary(action).record;
    return static_cast<bool>(action);
}

bool DumpRecord(ActionReader& reader, const Record& record, bool first)
{
    // Only binary input has the bytes in place; those of digits and texts are counted from 0.
    const Layout layout = reader.form().layout;
    const bool inPlace = layout == Layout::Frames || layout == Layout::EndToEnd;
    Print((first ? "" : "\n") + Painted(Tone::Name, TextOf(record.place)) + "\n");
    if (!record.head.empty()) {
        PrintRow(
            record.head, record.offset - record.head.size(),
            record.head.size() < 4 ? "not read" : "a frame of " + std::to_string(Word32At(record.head, 0)) + " bytes");
    }
    bool sound = record.problem.empty();
    std::string bytes;
    if (sound || (inPlace && !record.bytes.empty())) {  // of a line that is too long nothing is shown
        if (!BytesOf(reader, record, bytes)) return false;
        sound = DumpAction(record, bytes, inPlace ? record.offset : 0) && sound;
    }
    if (!record.problem.empty()) Report(record.place, Severity::Error, {"damaged", record.problem, {}, 0, 0, {}});
    return sound;
}

}  // namespace

int Dump(const DumpOptions& options)
{
    bool sound = true;
    const Form* source = SourceForm(options.from, sound);
    ActionReader reader;
    if (!sound || !reader.Open(options.files, source)) return kUsage;
    std::size_t unsound = 0;
    bool first = true;
    for (Record record; reader.NextRecord(record); first = false) unsound += !DumpRecord(reader, record, first);
    if (reader.failed()) return kUsage;
    return unsound > 0 ? kUnreadable : kDone;
}
