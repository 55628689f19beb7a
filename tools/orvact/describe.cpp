// A page about an action, a class, an enum, a type or a column.
#include <functional>

#include "action_view.h"
#include "commands.h"
#include "console.h"
#include "event_record.h"
#include "table.h"
#include "text.h"
#include "value_kind.h"
#include "whole_number.h"

namespace {

constexpr std::size_t kScreen = 100;

// 0, which no action has, for what is no number.
std::uint32_t CodeFrom(const std::string& text)
{
    std::uint32_t code = 0;
    return ParseWhole(text, code) ? code : 0;
}

std::vector<std::string> Words(std::string_view text)
{
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        if (!word.empty()) words.emplace_back(word);
    }
    return words;
}

// Pieces with a separator between them, in lines of the width; a piece is not broken.
std::string Wrapped(const std::vector<std::string>& pieces, std::string_view separator, std::size_t indent,
                    std::size_t width)
{
    std::string wrapped;
    std::size_t column = indent;
    for (const std::string& piece : pieces) {
        const std::size_t needed = DisplayWidth(piece) + separator.size() + 1;
        if (column > indent && column + needed > width) {
            wrapped += std::string(separator) + "\n" + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            wrapped += std::string(separator) + " ";
        }
        wrapped += piece;
        column += needed;
    }
    return wrapped;
}

// A line of the page; none for an empty text.
void Fact(const char* label, const std::string& text)
{
    constexpr std::size_t kLabel = 13;
    if (text.empty()) return;
    Print("  " + Painted(Tone::Quiet, Padded(label, kLabel)) + Wrapped(Words(text), "", kLabel + 2, kScreen) + "\n");
}

std::vector<std::string> Values(const EnumView& view)
{
    std::vector<std::string> values;
    for (const EnumValueView& value : view.values) values.push_back(std::to_string(value.value) + " " + value.name);
    return values;
}

void PrintParameters(const ActionView& action)
{
    Table table(4);
    table.Heading({"Name", "Type", "View", "Priority", "Columns", "Plain name"});
    for (const ParameterView& parameter : action.parameters) {
        table.Row({parameter.name, TypeName(parameter.type, parameter.enumType),
                   parameter.view ? ViewName(parameter.view) : std::string(), std::to_string(parameter.priority),
                   ColumnNames(parameter.columns), parameter.plainName});
    }
    Print("\n  " + Painted(Tone::Quiet, action.parameters.empty() ? "no parameters" : "parameters") + "\n");
    table.Write();
}

// The Boolean enum is used by type, all others by their ids.
bool Uses(const ActionView& action, const EnumView& view)
{
    for (const ParameterView& parameter : action.parameters) {
        const bool boolean = parameter.type == ORV_KIND_Boolean && view.id == 1;
        if (boolean || (parameter.type == ORV_KIND_Numeric32Bit && parameter.enumType == view.id)) return true;
    }
    return false;
}

void PrintEnums(const ActionView& action)
{
    for (const EnumView& view : Enums()) {
        if (!Uses(action, view)) continue;
        Print("\n  " + Painted(Tone::Quiet, "values of " + view.name) + "\n    " +
              Wrapped(Values(view), ",", 4, kScreen) + "\n");
    }
}

// As "Action.Parameter", all in one line.
std::string ActionsWith(const std::function<bool(const ParameterView&)>& fits)
{
    std::string names;
    for (const ActionView& action : Actions()) {
        for (const ParameterView& parameter : action.parameters) {
            if (fits(parameter)) names += (names.empty() ? "" : " ") + action.name + "." + parameter.name;
        }
    }
    return names.empty() ? "none" : names;
}

void PrintUse(const char* label, const std::string& names)
{
    Print("\n  " + Painted(Tone::Quiet, label) + "\n    " + Wrapped(Words(names), "", 4, kScreen) + "\n");
}

void DescribeAction(const ActionView& action)
{
    Print(Painted(Tone::Name, action.name) + "\n");
    Fact("code", std::to_string(action.code));
    Fact("class", action.className + " (" + std::to_string(action.classCode) + ")");
    Fact("priority", std::to_string(action.priority));
    Fact("plain name", action.plainName);
    Fact("description", action.description);
    PrintParameters(action);
    PrintEnums(action);
    const std::string example = ExampleText(action);
    if (!example.empty()) Print("\n  " + Painted(Tone::Quiet, "example") + "\n    " + example + "\n");
}

// False if there is none; `names` gets what there is, for a suggestion. So do those below.
bool DescribeClass(const std::string& lower, std::vector<std::string>& names)
{
    for (const ClassView& view : Classes()) {
        names.push_back(view.name);
        if (LowerCaseAscii(view.name) != lower) continue;
        Print(Painted(Tone::Name, view.name) + ", a class\n");
        Fact("code", std::to_string(view.code));
        Fact("priority", std::to_string(view.priority));
        Fact("plain name", view.plainName);
        Fact("description", view.description);
        std::string actions;
        for (const ActionView& action : Actions()) {
            if (action.classCode == view.code) actions += (actions.empty() ? "" : " ") + action.name;
        }
        PrintUse("actions", actions.empty() ? "none" : actions);
        return true;
    }
    return false;
}

bool DescribeEnum(const std::string& lower, std::vector<std::string>& names)
{
    for (const EnumView& view : Enums()) {
        names.push_back(view.name);
        // The name is that of a type as well, and the page of the type says more.
        if (LowerCaseAscii(view.name) != lower || view.name == "Boolean") continue;
        Print(Painted(Tone::Name, view.name) + ", an enum\n");
        Fact("id", std::to_string(view.id));
        Table table(4);
        table.NumbersIn(0);
        table.Heading({"Value", "Name", "Plain name"});
        for (const EnumValueView& value : view.values) {
            table.Row({std::to_string(static_cast<std::int32_t>(value.value)), value.name, value.plainName});
        }
        Print("\n");
        table.Write();
        PrintUse("used by", ActionsWith([&](const ParameterView& parameter) { return parameter.enumType == view.id; }));
        return true;
    }
    return false;
}

bool DescribeType(const std::string& lower, std::vector<std::string>& names)
{
    for (const std::uint32_t kind : kKinds) {
        const std::string name = KindName(kind);
        names.push_back(name);
        if (LowerCaseAscii(name) != lower) continue;
        Print(Painted(Tone::Name, name) + ", a type\n");
        Fact("kind", std::to_string(kind));
        Fact("written as", WrittenAs(kind));
        // A list of nearly all actions would tell nothing.
        const bool common = kind == ORV_KIND_Numeric32Bit || kind == ORV_KIND_String;
        if (!common) PrintUse("used by", ActionsWith([&](const auto& parameter) { return parameter.type == kind; }));
        return true;
    }
    return false;
}

bool DescribeColumn(const std::string& lower, std::vector<std::string>& names)
{
    for (const EventColumn& column : kEventColumns) {
        const std::string name = ColumnNames(column.bit);
        names.push_back(name);
        names.push_back(column.name);
        if (LowerCaseAscii(name) != lower && LowerCaseAscii(column.name) != lower) continue;
        Print(Painted(Tone::Name, name) + ", a column of the event record\n");
        Fact("database", column.name);
        PrintUse("filled by",
                 ActionsWith([&](const ParameterView& parameter) { return (parameter.columns & column.bit) != 0; }));
        return true;
    }
    return false;
}

}  // namespace

int Describe(const std::string& name)
{
    // The name first: an action could be called like a number.
    const std::uint32_t code = ActionCode(name);
    if (const ActionView* action = FindAction(code ? code : CodeFrom(name))) {
        DescribeAction(*action);
        return kDone;
    }
    std::vector<std::string> names;
    const std::string lower = LowerCaseAscii(name);
    const bool found = DescribeClass(lower, names) || DescribeEnum(lower, names) || DescribeType(lower, names) ||
                       DescribeColumn(lower, names);
    if (found) return kDone;
    for (const std::string& action : ActionNames()) names.push_back(action);
    return ReportUnknown("action, class, enum, type or column", name, names);
}
