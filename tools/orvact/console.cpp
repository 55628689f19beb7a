#include "console.h"

#include <cstdlib>
#include <new>

#include "commands.h"
#include "text.h"

namespace {

std::size_t passingWidth = 0;

struct Output {
    std::FILE* file = stdout;
    std::string path;   // "" for standard output
    std::string drawn;  // the file that is written until it is whole
} output;

Colours colours = Colours::Auto;

bool Colourful()
{
    if (colours != Colours::Auto) return colours == Colours::Always;
    static const bool use = [] {
        const char* forbidden = std::getenv("NO_COLOR");
        return (!forbidden || !*forbidden) && OutputIsTerminal() && System::Colourful();
    }();
    return use;
}

constexpr std::string_view kBold = "\x1b[1m";
constexpr std::string_view kFaint = "\x1b[2m";
constexpr std::string_view kPlain = "\x1b[0m";

// Replaces control characters, except line breaks and the tones above: input from a log must not steer a terminal.
std::string Harmless(std::string_view text)
{
    std::string harmless;
    std::size_t from = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\n' && text[at] != '\x1b') continue;
        const std::string_view rest = text.substr(at);
        const bool tone = rest.starts_with(kBold) || rest.starts_with(kFaint) || rest.starts_with(kPlain);
        if (text[at] == '\x1b' && !tone) continue;
        const std::size_t length = tone ? kBold.size() : 1;
        harmless += Visible(text.substr(from, at - from));
        harmless += text.substr(at, length);
        from = at + length;
        at = from - 1;
    }
    return harmless + Visible(text.substr(from));
}

}  // namespace

void Print(std::string_view text)
{
    if (OutputIsTerminal()) {
        PrintPassing("");
        return System::Write(stdout, Harmless(text));
    }
    System::Write(output.file, text);
}

void PrintBytes(std::string_view bytes)
{
    std::fwrite(bytes.data(), 1, bytes.size(), output.file);
}

void PrintError(std::string_view text)
{
    // So that results and errors stay in order on a screen.
    std::fflush(stdout);
    PrintPassing("");
    System::Write(stderr, Harmless(text));
}

void PrintPassing(std::string_view line)
{
    static const bool terminal = System::ErrorIsTerminal();
    if (!terminal || (line.empty() && passingWidth == 0)) return;
    const std::size_t width = DisplayWidth(line);
    std::string shown = "\r" + Padded(line, passingWidth);
    if (line.empty()) shown += '\r';
    passingWidth = width;
    System::Write(stderr, shown);
    std::fflush(stderr);
}

bool ShowsPassing()
{
    static const bool shows = System::ErrorIsTerminal() && !OutputIsTerminal();
    return shows;
}

bool SendOutputTo(const std::string& path)
{
    if (path.empty() || path == "-") return true;
    // A device or a pipe is written as it comes.
    std::FILE* known = OpenFile(path);
    const bool device = known && !IsFile(path);
    if (known) std::fclose(known);
    const std::string drawn = device ? path : path + ".part";
    std::FILE* file = System::Create(drawn);
    if (file) output = {file, path, drawn};
    return file != nullptr;
}

bool FlushOutput()
{
    return std::fflush(output.file) == 0 && !std::ferror(output.file);
}

bool FinishOutput(bool keep)
{
    const bool written = FlushOutput();
    if (output.path.empty()) return written;
    const bool closed = std::fclose(output.file) == 0 && written;
    output.file = stdout;
    // A device has been written as it came: there is nothing to rename.
    if (output.drawn == output.path) return closed;
    const bool kept = closed && keep && System::Rename(output.drawn, output.path);
    if (!kept) System::Remove(output.drawn);
    return kept || (closed && !keep);
}

bool OutputIsTerminal()
{
    // Asked once: the answer does not change, and each line of output asks.
    static const bool terminal = System::OutputIsTerminal();
    return terminal && output.path.empty();
}

std::size_t OutputWidth()
{
    return OutputIsTerminal() ? System::OutputWidth() : 0;
}

void UseColours(Colours when)
{
    colours = when;
}

std::string Painted(Tone tone, std::string_view text)
{
    if (!Colourful()) return std::string(text);
    return std::string(tone == Tone::Name ? kBold : kFaint) + std::string(text) + std::string(kPlain);
}

int System::Start(const std::function<std::vector<std::string>()>& readArguments)
try {
    return Run(readArguments());
} catch (const std::bad_alloc&) {
    // No memory for a report either, so it is written without a string.
    std::fputs("orvact: there is not enough memory\n", stderr);
    return kUsage;
}
