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

// The first unit that is no blank, 0 if there is none.
char16_t FirstOf(std::u16string_view text)
{
    const auto found = std::find_if_not(text.begin(), text.end(), IsBlank);
    return found == text.end() ? u'\0' : *found;
}

// A parameter is known by what follows it, so without the bracket reading stops before the last one.
bool ReadsWithBracket(std::u16string_view text)
{
    std::u16string closed(text);
    return static_cast<bool>(orv::Action::TryParse(closed += u')'));
}

struct Cell {
    char32_t character;
    std::size_t width;
};

// A tab goes to the next of the columns that terminals stop at, counted from the start of the text.
std::vector<Cell> Cells(std::u16string_view wide)
{
    const std::string narrow = orv::ToUtf8(wide);
    std::string_view text = narrow;
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

// Counted in characters from 1.
std::size_t ColumnOf(std::u16string_view text, std::size_t position)
{
    const std::string before = orv::ToUtf8(text.substr(0, position));
    std::size_t column = 1;
    for (std::string_view rest = before; !rest.empty(); ++column) NextCharacter(rest);
    return column;
}

// The line, or the part around the place, and a caret below the character that stands there.
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

}  // namespace

std::string ReasonFor(std::u16string_view text, std::size_t consumed)
{
    if (consumed == 0) return "no action here: expected a name and an opening bracket";
    const char16_t first = FirstOf(text);
    if (first == '?' || first == '!') {
        return std::string("a message marked '") + static_cast<char>(first) + "' is neither action nor match action";
    }
    // Reading came to its end and still gave nothing: the library has passed the text to the sibling.
    if (text[consumed - 1] == ')') {
        return "complete, but text of the sibling platform, whose library is not here: a value without a name, or an "
               "unknown action without parameters";
    }
    return ReadsWithBracket(text) ? "no closing bracket" : "neither a parameter nor the closing bracket";
}

void Locate(std::u16string_view text, std::size_t position, Remark& remark)
{
    std::size_t begin = 0;
    remark.line = 0;
    for (std::size_t at = 0; (at = text.find_first_of(u"\r\n", at)) < position; begin = at) {
        at += text.substr(at, 2) == u"\r\n" ? 2 : 1;
        ++remark.line;
    }
    begin = std::min(begin, position);
    const std::size_t end = std::min(text.find_first_of(u"\r\n", begin), text.size());
    const std::u16string_view line = text.substr(begin, std::max(end, position) - begin);
    remark.column = ColumnOf(line, position - begin);
    remark.context = WithCaret(line, position - begin);
}
