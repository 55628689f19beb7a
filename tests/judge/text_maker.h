// Makes texts to compare readers with: the same texts for the same seed, on every system.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace OrvPLC::Judge {

class TextMaker {
public:
    explicit TextMaker(std::uint64_t seed) : state_(seed) {}

    // A well-formed text, one with mistakes, tokens in any order, markup, or a piece that repeats itself.
    std::u16string Make();

private:
    std::uint64_t Number();
    std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(Number() % bound); }
    bool OneIn(std::size_t chances) { return Below(chances) == 0; }

    std::u16string Action();
    std::u16string Value();
    std::u16string Literal();
    std::u16string String();
    std::u16string Tag();
    std::u16string Tokens(std::size_t most);
    std::u16string Repeated();
    std::u16string_view Blanks();
    std::u16string_view Digits();
    std::u16string_view Name();
    void Spoil(std::u16string& text);

    std::uint64_t state_;
};

}  // namespace OrvPLC::Judge
