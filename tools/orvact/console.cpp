#include "console.h"

#include <cstdlib>

#include "text.h"

namespace {

bool UseColours()
{
    static const bool use = [] {
        const char* forbidden = std::getenv("NO_COLOR");
        return (!forbidden || !*forbidden) && System::OutputIsTerminal();
    }();
    return use;
}

std::size_t passingWidth = 0;

}  // namespace

void Print(std::string_view text)
{
    System::Write(stdout, text);
}

void PrintError(std::string_view text)
{
    std::fflush(stdout);
    PrintPassing("");
    System::Write(stderr, text);
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

bool FlushOutput()
{
    return std::fflush(stdout) == 0 && !std::ferror(stdout);
}

std::string Painted(Tone tone, std::string_view text)
{
    if (!UseColours()) return std::string(text);
    const char* begin = tone == Tone::Name ? "\x1b[1m" : "\x1b[2m";
    return begin + std::string(text) + "\x1b[0m";
}
