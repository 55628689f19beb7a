// Lists what the catalogue holds.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "action_view.h"
#include "commands.h"
#include "console.h"
#include "forms.h"
#include "report.h"
#include "sibling_forms.h"
#include "table.h"
#include "text.h"

namespace {

using Json = nlohmann::ordered_json;

void PrintJson(const Json& json)
{
    Print(json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

std::size_t ActionsOf(const std::vector<ActionView>& actions, std::uint32_t classCode)
{
    return static_cast<std::size_t>(std::count_if(
        actions.begin(), actions.end(), [&](const ActionView& action) { return action.classCode == classCode; }));
}

int ListClasses(bool extension, bool json)
{
    const std::vector<ActionView> actions = Actions();
    Json rows = Json::array();
    Table table;
    table.NumbersIn(0);
    table.Heading({"Code", "Name", "Priority", "Actions", "Plain name"});
    for (const ClassView& view : Classes()) {
        if (extension && !IsExtension(view)) continue;
        const std::size_t count = ActionsOf(actions, view.code);
        rows.push_back({{"code", view.code},
                        {"name", view.name},
                        {"priority", view.priority},
                        {"actions", count},
                        {"plainName", view.plainName},
                        {"description", view.description}});
        table.Row({std::to_string(view.code), view.name, std::to_string(view.priority), std::to_string(count),
                   view.plainName});
    }
    json ? PrintJson(rows) : table.Write();
    return kDone;
}

Json ToJson(const ActionView& action)
{
    Json parameters = Json::array();
    for (const ParameterView& parameter : action.parameters) {
        Json row = {{"name", parameter.name},
                    {"type", KindName(parameter.type)},
                    {"priority", parameter.priority},
                    {"plainName", parameter.plainName},
                    {"description", parameter.description}};
        if (parameter.enumType != 0) row["enum"] = EnumName(parameter.enumType);
        if (parameter.view != 0) row["view"] = ViewName(parameter.view);
        if (parameter.columns != 0) row["columns"] = ColumnNames(parameter.columns);
        parameters.push_back(row);
    }
    return {{"code", action.code},         {"name", action.name},           {"class", action.className},
            {"priority", action.priority}, {"plainName", action.plainName}, {"description", action.description},
            {"parameters", parameters},    {"example", ExampleText(action)}};
}

std::string ParameterNames(const ActionView& action)
{
    std::string names;
    for (const ParameterView& parameter : action.parameters) names += (names.empty() ? "" : ", ") + parameter.name;
    return names;
}

// The class by its name in any case; "" stands for none.
int FindClass(const std::string& name, std::string& found)
{
    if (name.empty()) return kDone;
    const std::vector<std::string> names = ClassNames();
    const std::string lower = LowerCaseAscii(name);
    const auto match = std::find_if(names.begin(), names.end(),
                                    [&](const std::string& candidate) { return LowerCaseAscii(candidate) == lower; });
    if (match == names.end()) return ReportUnknown("class", name, names);
    found = *match;
    return kDone;
}

int ListActions(const std::string& className, bool extension, bool json)
{
    std::string wanted;
    if (const int code = FindClass(className, wanted)) return code;
    Json rows = Json::array();
    Table table;
    table.NumbersIn(0);
    table.Heading({"Code", "Name", "Class", "Parameters"});
    for (const ActionView& action : Actions()) {
        if (!wanted.empty() && action.className != wanted) continue;
        if (extension && !IsExtension(action)) continue;
        if (json) {
            rows.push_back(ToJson(action));
        } else {
            table.Row({std::to_string(action.code), action.name, action.className, ParameterNames(action)});
        }
    }
    json ? PrintJson(rows) : table.Write();
    return kDone;
}

// From the sibling's text, to it, or both.
std::string Direction(bool read, bool written)
{
    if (read && written) return "both";
    return read ? "from" : written ? "to" : "none";
}

// An action, or a name that only the sibling has, and what becomes of it there and here.
struct SiblingRow {
    std::string name;
    std::string code;     // "" for a name that only the sibling has
    std::string gives;    // the action that the sibling's text of this name gives, "" for none
    std::string written;  // an example of the text for the sibling, "" for none
    std::string Remark() const { return gives.empty() || gives == name ? written : "gives " + gives; }
};

// What really happens to a text is asked of the library, not looked up.
std::vector<SiblingRow> SiblingRows(const ActionView& view)
{
    const std::string example = ExampleText(view);
    const Action action = Action::TryParse(example.empty() ? view.name + " ()" : example);
    std::vector<SiblingRow> rows = {{view.name, std::to_string(view.code), ActionFromSibling(view.name),
                                     action ? WriteHesk(action).record : std::string()}};
    // Some actions have a second text there, under a name that does not exist here.
    const std::string second = view.name + "Ex";
    const std::string gives = ActionCode(second) == 0 ? ActionFromSibling(second) : std::string();
    if (!gives.empty()) rows.push_back({second, "", gives, ""});
    return rows;
}

int ListSibling(const std::string& className, bool json)
{
    std::string wanted;
    if (const int code = FindClass(className, wanted)) return code;
    Json rows = Json::array();
    Table table;
    table.NumbersIn(0);
    table.Heading({"Code", "Name", "Converts", "As"});
    for (const ActionView& view : Actions()) {
        if (!wanted.empty() && view.className != wanted) continue;
        for (const SiblingRow& row : SiblingRows(view)) {
            const bool read = !row.gives.empty(), written = !row.written.empty();
            rows.push_back({{"name", row.name}, {"fromHesk", read}, {"toHesk", written}});
            if (read) rows.back()["gives"] = row.gives;
            if (written) rows.back()["example"] = row.written;
            table.Row({row.code, row.name, Direction(read, written), row.Remark()});
        }
    }
    json ? PrintJson(rows) : table.Write();
    return kDone;
}

std::string ValueNames(const EnumView& view)
{
    std::string names;
    for (const EnumValueView& value : view.values) {
        names += (names.empty() ? "" : ", ") + std::to_string(value.value) + " " + value.name;
    }
    return names;
}

Json ToJson(const EnumView& view)
{
    Json values = Json::array();
    for (const EnumValueView& value : view.values) {
        values.push_back({{"value", value.value},
                          {"name", value.name},
                          {"plainName", value.plainName},
                          {"description", value.description}});
    }
    return {{"id", view.id}, {"name", view.name}, {"values", values}};
}

int ListEnums(bool extension, bool json)
{
    Json rows = Json::array();
    Table table;
    table.NumbersIn(0);
    table.Heading({"Id", "Name", "Values"});
    for (const EnumView& view : Enums()) {
        if (extension && !IsExtension(view)) continue;
        if (json) {
            rows.push_back(ToJson(view));
        } else {
            table.Row({std::to_string(view.id), view.name, ValueNames(view)});
        }
    }
    json ? PrintJson(rows) : table.Write();
    return kDone;
}

}  // namespace

int List(const ListOptions& options)
{
    if (options.what == "actions") {
        return options.hesk ? ListSibling(options.className, options.json)
                            : ListActions(options.className, options.extension, options.json);
    }
    if (options.hesk || !options.className.empty()) {
        return Complain("usage", "--class and --hesk go with actions only");
    }
    return options.what == "classes" ? ListClasses(options.extension, options.json)
                                     : ListEnums(options.extension, options.json);
}

int ReportUnknown(const std::string& what, const std::string& name, const std::vector<std::string>& names)
{
    return Complain("unknown", "no " + what + " '" + Visible(name) + "'", Nearest(name, names));
}
