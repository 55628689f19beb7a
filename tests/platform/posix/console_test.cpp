#include "platform/console.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string>

#include "ulmo/debug_out_streamers.h"

namespace {

using Platform::ConsoleColour;
using Platform::ConsoleStream;

// What a terminal in the place of both standard streams receives.
template <class Write>
std::string OnATerminal(const Write& write)
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    grantpt(terminal);
    unlockpt(terminal);
    const int inner = open(ptsname(terminal), O_RDWR | O_NOCTTY);
    const int output = dup(STDOUT_FILENO);
    const int error = dup(STDERR_FILENO);
    dup2(inner, STDOUT_FILENO);
    dup2(inner, STDERR_FILENO);
    write();
    dup2(output, STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    EXPECT_EQ(::write(inner, "|", 1), 1);  // the end
    std::string shown;
    for (char byte = 0; read(terminal, &byte, 1) == 1 && byte != '|';) shown += byte;
    for (const int descriptor : {terminal, inner, output, error}) close(descriptor);
    return shown;
}

std::string Shown(std::optional<ConsoleColour> colour)
{
    return OnATerminal([=] { ConsoleStream(ConsoleStream::Kind::Output).Write(u"\u00e4", colour); });
}

// The bits of a colour count blue, green, red, bright; a terminal counts red, green, blue.
TEST(PosixConsole, ColoursOfATerminal)
{
    const struct {
        ConsoleColour colour;
        const char* refused;
        const char* shown;
    } cases[] = {{1, nullptr, "\x1B[34m\u00e4\x1B[0m"},  {2, nullptr, "\x1B[32m\u00e4\x1B[0m"},
                 {4, "", "\x1B[31m\u00e4\x1B[0m"},       {7, "", "\x1B[37m\u00e4\x1B[0m"},
                 {12, nullptr, "\x1B[91m\u00e4\x1B[0m"}, {12, "1", "\u00e4"}};
    for (const auto& [colour, refused, shown] : cases) {
        unsetenv("NO_COLOR");
        if (refused) setenv("NO_COLOR", refused, 1);
        EXPECT_EQ(Shown(colour), shown);
    }
    unsetenv("NO_COLOR");
    EXPECT_EQ(Shown(std::nullopt), "\u00e4");
}

TEST(PosixConsole, TheColourOfALineTellsItsLevel)
{
    Ulmo::ConsoleOutputStreamer console;
    const char* starts[] = {"\x1B[91mERROR", "\x1B[95mSECTY", "\x1B[93mWARNG", "\x1B[96mINFO ", "DEBUG"};
    for (std::uint32_t level = 0; level < std::size(starts); ++level) {
        const std::string shown = OnATerminal([&] { console.Write({1, nullptr, level}, u"s", u"text"); });
        EXPECT_TRUE(shown.starts_with(starts[level])) << shown;
    }
}

}  // namespace
