#include "csv.h"

#include "console.h"
#include "settings.h"
#include "text.h"

namespace {

// A text as it is, a channel as its number, id or name, everything else as in action text.
struct CellText {
    const Action& action;
    const orv::CarriedParameter& held;

    std::string operator()(const std::u16string& text) const { return orv::ToUtf8(text); }
    std::string operator()(const orv::EventType& type) const { return Named(type.id, type.name); }
    std::string operator()(const orv::Resource& resource) const
    {
        return resource.name.empty() ? orv::ToText(resource.guid) : orv::ToUtf8(resource.name);
    }
    std::string operator()(const orv::Channel& channel) const
    {
        return Named(channel.number != 0 ? channel.number : channel.id, channel.name);
    }
    template <class T>
    std::string operator()(const T&) const
    {
        const std::string text = orv::ToUtf8(action.TextOfValue(held.name).value_or(u""));
        if (!settings.names) return text;
        const auto number = static_cast<std::uint32_t>(action.Get<std::int32_t>(held.name).value_or(0));
        const std::string word = held.enumType ? ValueName(held.enumType, number) : std::string();
        return word.empty() ? text : word;
    }

    static std::string Named(std::uint64_t number, const std::u16string& name)
    {
        return number != 0 || name.empty() ? std::to_string(number) : orv::ToUtf8(name);
    }
};

std::string Cell(const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char unit : text) quoted += unit == '"' ? std::string("\"\"") : std::string(1, unit);
    return quoted + "\"";
}

}  // namespace

bool IsCsv(const std::string& form)
{
    return LowerCaseAscii(form) == kCsv;
}

std::string CsvLine(const std::vector<std::string>& cells)
{
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) line += (i > 0 ? "," : "") + Cell(cells[i]);
    return line + "\r\n";
}

std::size_t CsvTable::ColumnOf(const std::u16string& name)
{
    const std::string narrow = orv::ToUtf8(name);
    const auto [found, added] = columns_.try_emplace(LowerCaseAscii(narrow), heading_.size());
    if (added) heading_.push_back(narrow);
    return found->second;
}

void CsvTable::Add(std::vector<std::string> cells, const Action& action)
{
    auto& row = rows_.emplace_back();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (!cells[i].empty()) row.emplace_back(i, std::move(cells[i]));
    }
    if (!action) return;
    for (const orv::ParameterWithValue& parameter : action.Values()) {
        row.emplace_back(ColumnOf(parameter.name), std::visit(CellText{action, parameter}, parameter.value));
    }
}

void CsvTable::Write() const
{
    Print(CsvLine(heading_));
    for (const auto& row : rows_) {
        std::vector<std::string> cells(heading_.size());
        for (const auto& [column, text] : row) cells[column] = text;
        Print(CsvLine(cells));
    }
}
