#include "console.h"

#include <cstdlib>

namespace {

bool UseColours()
{
    static const bool use = [] {
        const char* forbidden = std::getenv("NO_COLOR");
        return (!forbidden || !*forbidden) && System::OutputIsTerminal();
    }();
    return use;
}

}  // namespace

void Print(std::string_view text)
{
    System::Write(stdout, text);
}

void PrintError(std::string_view text)
{
    std::fflush(stdout);
    System::Write(stderr, text);
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
