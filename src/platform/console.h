// The console of the process: its standard output and its standard error.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace Platform {

// A colour as the Windows console counts it: 1 blue, 2 green, 4 red, 8 bright.
using ConsoleColour = std::uint16_t;

class ConsoleStream {
public:
    enum class Kind { Output, Error };

    explicit ConsoleStream(Kind kind);

    bool IsValid() const { return valid_; }
    // Writes the text with one call and restores the colour; without a colour the present one is kept. A file or a pipe
    // gets UTF-8 without colours. Never fails: what the system refuses is lost. On Linux a terminal gets colours unless
    // NO_COLOR is set.
    void Write(std::u16string_view text, std::optional<ConsoleColour> colour) const;

private:
    std::intptr_t handle_;  // the system's
    bool valid_;
};

}  // namespace Platform
