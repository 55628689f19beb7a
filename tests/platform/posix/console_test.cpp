#include "platform/console.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace {

using Platform::ConsoleColour;
using Platform::ConsoleStream;

// What a terminal in the place of standard output receives.
std::string Shown(std::optional<ConsoleColour> colour)
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    grantpt(terminal);
    unlockpt(terminal);
    const int inner = open(ptsname(terminal), O_RDWR | O_NOCTTY);
    const int before = dup(STDOUT_FILENO);
    dup2(inner, STDOUT_FILENO);
    ConsoleStream(ConsoleStream::Kind::Output).Write(u"\u00e4", colour);
    dup2(before, STDOUT_FILENO);
    char bytes[100];
    const ssize_t size = read(terminal, bytes, sizeof bytes);
    for (const int descriptor : {terminal, inner, before}) close(descriptor);
    return {bytes, static_cast<std::size_t>(size > 0 ? size : 0)};
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

}  // namespace
