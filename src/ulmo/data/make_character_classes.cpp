// Prints the rows of character_classes.txt: asks the pattern engine, left to itself, about each UTF-16 unit. A program
// for Windows, built beside the tests there (target make_character_classes).
#include <boost/regex.hpp>
#include <cstdio>

namespace {

constexpr unsigned kUnits = 0x10000;

bool Fits(const boost::wregex& expression, unsigned unit)
{
    const wchar_t character = static_cast<wchar_t>(unit);
    return boost::regex_match(&character, &character + 1, expression);
}

void PrintRange(unsigned first, unsigned last)
{
    std::printf(first == last ? " %04X" : " %04X-%04X", first, last);
}

void PrintRows(const char* name, const boost::wregex& expression)
{
    int inRow = 0;
    for (unsigned first = 0; first < kUnits; ++first) {
        if (!Fits(expression, first)) continue;
        unsigned end = first + 1;
        while (end < kUnits && Fits(expression, end)) ++end;
        if (inRow == 0) std::printf("%s", name);
        PrintRange(first, end - 1);
        first = end;
        inRow = (inRow + 1) % 10;
        if (inRow == 0) std::printf("\n");
    }
    if (inRow > 0) std::printf("\n");
}

}  // namespace

int main()
{
    const boost::wregex letter(L"[[:alpha:]]"), digit(L"\\d"), blank(L"\\s"), both(L"[[:alnum:]]"), word(L"\\w");
    for (unsigned unit = 0; unit < kUnits; ++unit) {
        const bool isLetter = Fits(letter, unit), isDigit = Fits(digit, unit), isBoth = isLetter || isDigit;
        if (isLetter + isDigit + Fits(blank, unit) > 1 || Fits(both, unit) != isBoth ||
            Fits(word, unit) != (isBoth || unit == '_')) {
            std::fprintf(stderr, "U+%04X: the classes are not made of letters, digits and blanks alone\n", unit);
            return 1;
        }
    }
    PrintRows("letter", letter);
    PrintRows("digit", digit);
    PrintRows("blank", blank);
    return 0;
}
