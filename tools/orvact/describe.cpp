// A page about one action.
#include <charconv>

#include "action_view.h"
#include "commands.h"
#include "console.h"
#include "table.h"
#include "text.h"

namespace {

constexpr std::size_t kScreen = 100;

std::uint32_t CodeFrom(const std::string& text)
{
    std::uint32_t code = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), code);
    return fault == std::errc() && end == text.data() + text.size() ? code : 0;
}

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

int ReportUnknownAction(const std::string& nameOrCode)
{
    std::vector<std::string> names;
    for (const ActionView& action : Actions()) names.push_back(action.name);
    return ReportUnknown("action", nameOrCode, names);
}

}  // namespace

int Describe(const std::string& nameOrCode)
{
    const std::uint32_t code = ActionCode(nameOrCode);
    const ActionView* action = FindAction(code ? code : CodeFrom(nameOrCode));
    if (!action) return ReportUnknownAction(nameOrCode);
    Print(Painted(Tone::Name, action->name) + "\n");
    Fact("code", std::to_string(action->code));
    Fact("class", action->className + " (" + std::to_string(action->classCode) + ")");
    Fact("priority", std::to_string(action->priority));
    Fact("plain name", action->plainName);
    Fact("description", action->description);
    PrintParameters(*action);
    PrintEnums(*action);
    const std::string example = ExampleText(*action);
    if (!example.empty()) Print("\n  " + Painted(Tone::Quiet, "example") + "\n    " + example + "\n");
    return kDone;
}
