#include "fault.h"

#include <OrvActions.h>

#include <algorithm>
#include <vector>

#include "action_view.h"
#include "text.h"

namespace {

constexpr std::string_view kIndent = "    ";
constexpr std::size_t kBefore = 60;  // columns of a long line that are shown on either side of the caret
constexpr std::size_t kBehind = 36;

bool IsBlank(char16_t unit)
{
    return unit == ' ' || (unit >= '\t' && unit <= '\r') || unit == 0xA0 || unit == 0x3000;
}

char16_t FirstOf(std::u16string_view text)
{
    const auto found = std::find_if_not(text.begin(), text.end(), IsBlank);
    return found == text.end() ? u'\0' : *found;
}

// A parameter is known by what follows it, so without the bracket reading stops in front of the last one.
bool ReadsWithBracket(std::u16string_view text)
{
    std::uint32_t consumed = 0;
    return static_cast<bool>(Action(ReadText(std::u16string(text) + u')', consumed)));
}

struct Cell {
    char32_t character;
    std::size_t width;
};

// A tab goes to the next of the columns that terminals stop at, counted from the start of the text.
std::vector<Cell> Cells(std::u16string_view text)
{
    std::vector<Cell> cells;
    std::size_t column = 0;
    while (!text.empty()) {
        const char32_t character = NextCharacter(text);
        const std::size_t width = character == '\t' ? 8 - column % 8 : CharacterWidth(VisibleCharacter(character));
        cells.push_back({character, width});
        column += width;
    }
    return cells;
}

void Append(std::string& line, const Cell& cell)
{
    if (cell.character == '\t') {
        line.append(cell.width, ' ');
    } else {
        AppendUtf8(line, VisibleCharacter(cell.character));
    }
}

}  // namespace

std::string ReasonFor(std::u16string_view text, std::uint32_t consumed)
{
    TOrvLastErrorInfo error{};
    if (OrvAct_GetLastError(&error)) return Visible(Utf8FromWide(error.messageW));
    if (consumed == 0) return "no action here: expected a name and an opening bracket";
    const char16_t first = FirstOf(text);
    if (first == '?' || first == '!') {
        return std::string("a message marked '") + static_cast<char>(first) + "' is neither action nor match action";
    }
    if (text[consumed - 1] == ')') {
        return "complete, but text of the sibling platform, whose library is not here: a value without a name, or an "
               "unknown action without parameters";
    }
    return ReadsWithBracket(text) ? "no closing bracket" : "neither a parameter nor the closing bracket";
}

std::size_t ColumnOf(std::u16string_view text, std::size_t position)
{
    std::size_t column = 1;
    for (std::u16string_view before = text.substr(0, position); !before.empty(); ++column) NextCharacter(before);
    return column;
}

std::string WithCaret(std::u16string_view text, std::size_t position)
{
    const std::vector<Cell> cells = Cells(text);
    const std::size_t caret = ColumnOf(text, position) - 1;
    std::size_t begin = caret;
    for (std::size_t used = 0; begin > 0 && used < kBefore; --begin) used += cells[begin - 1].width;
    std::size_t end = caret;
    for (std::size_t used = 0; end < cells.size() && used < kBehind; ++end) used += cells[end].width;

    std::string line(kIndent);
    std::string below(kIndent);
    if (begin > 0) {
        line += "…";
        below += ' ';
    }
    for (std::size_t i = begin; i < end; ++i) {
        Append(line, cells[i]);
        if (i < caret) below.append(cells[i].width, ' ');
    }
    if (end < cells.size()) line += "…";
    return line + "\n" + below + "^\n";
}
