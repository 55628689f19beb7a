#include "csv.h"

#include <new>
#include <utility>

#include "bytes.h"
#include "console.h"
#include "settings.h"
#include "text.h"

namespace {

constexpr std::size_t kMostInMemory = 1 << 20;

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

// As RFC 4180 has it: quotes only where they are needed, and doubled inside.
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

void CsvTable::AddCell(std::size_t column, const std::string& text)
{
    rows_ += LittleEndian(static_cast<std::uint32_t>(column));
    rows_ += LittleEndian(static_cast<std::uint32_t>(text.size())) + text;
    ++cells_;
}

void CsvTable::Add(std::vector<std::string> cells, const Action& action)
{
    const std::size_t begin = rows_.size();
    cells_ = 0;
    // Room for the number of cells, which is known at the end.
    rows_.resize(begin + 4);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (!cells[i].empty()) AddCell(i, cells[i]);
    }
    if (action) {
        for (const orv::ParameterWithValue& parameter : action.Values()) {
            AddCell(ColumnOf(parameter.name), std::visit(CellText{action, parameter}, parameter.value));
        }
    }
    rows_.replace(begin, 4, LittleEndian(cells_));
    ++rowsHere_;
    if (rows_.size() >= kMostInMemory && !keeps_) PutAside();
}

// Where no file can be made, or nothing fits into it any more, the rows stay in memory.
void CsvTable::PutAside()
{
    if (!aside_) aside_.reset(std::tmpfile());
    if (!aside_ || std::fwrite(rows_.data(), 1, rows_.size(), aside_.get()) < rows_.size()) {
        keeps_ = true;
        return;
    }
    rowsAside_ += std::exchange(rowsHere_, 0);
    rows_.clear();
}

std::string CsvTable::Taken(std::FILE* file, std::size_t size)
{
    std::string bytes = file ? std::string(size, '\0') : rows_.substr(taken_, size);
    if (!file) taken_ += size;
    // What was written there cannot be read again: the rows are as lost as without memory.
    if (file && std::fread(bytes.data(), 1, size, file) < size) throw std::bad_alloc();
    return bytes;
}

void CsvTable::WriteRow(std::FILE* file)
{
    std::vector<std::string> cells(heading_.size());
    for (std::uint32_t left = Word32At(Taken(file, 4), 0); left > 0; --left) {
        const std::string head = Taken(file, 8);
        cells[Word32At(head, 0)] = Taken(file, Word32At(head, 4));
    }
    Print(CsvLine(cells));
}

void CsvTable::Write()
{
    Print(CsvLine(heading_));
    if (aside_) std::rewind(aside_.get());
    for (std::uint64_t left = rowsAside_; left > 0; --left) WriteRow(aside_.get());
    for (taken_ = 0; rowsHere_ > 0; --rowsHere_) WriteRow(nullptr);
}
