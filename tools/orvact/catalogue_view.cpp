#include "catalogue_view.h"

#include <OrvActions.hpp>

#include <algorithm>
#include <iterator>
#include <map>

#include "text.h"
#include "value_kind.h"

namespace {

template <class View>
View WithTexts(const orv::EntryTexts& texts)
{
    View view;
    view.name = orv::ToUtf8(texts.name);
    view.plainName = orv::ToUtf8(texts.plainName);
    view.description = orv::ToUtf8(texts.description);
    return view;
}

std::vector<ParameterView> Parameters(std::uint32_t code)
{
    std::vector<ParameterView> parameters;
    for (const orv::ParameterInfo& info : orv::ParametersOf(code)) {
        ParameterView& parameter = parameters.emplace_back(WithTexts<ParameterView>(info));
        parameter.type = info.kind;
        parameter.view = info.view;
        parameter.priority = info.priority;
        parameter.enumType = info.enumId;
        parameter.columns = info.columns;
    }
    return parameters;
}

ActionView ViewOf(const orv::ActionInfo& info)
{
    ActionView action = WithTexts<ActionView>(info);
    action.code = info.code;
    action.classCode = info.classCode;
    action.priority = info.priority;
    if (const auto owner = orv::FindClass(info.classCode)) action.className = orv::ToUtf8(owner->name);
    action.parameters = Parameters(info.code);
    return action;
}

// In any case of ASCII letters.
bool SameName(std::string_view a, std::string_view b)
{
    const auto lower = [](char unit) { return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit | 0x20) : unit; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

const ParameterView* FindIn(const std::vector<ParameterView>& parameters, std::string_view name)
{
    for (const ParameterView& parameter : parameters) {
        if (SameName(parameter.name, name)) return &parameter;
    }
    return nullptr;
}

std::string Hexadecimal(std::uint32_t number)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(number));
    return text;
}

// How many characters to put in, take out or change, by one row of the table at a time.
std::size_t EditDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] != b[j - 1]);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[b.size()];
}

// The catalogue does not say which columns a general parameter fills by its name, but a filled record does.
std::uint32_t ColumnsOnAnyAction(const std::string& name)
{
    orv::Action action = orv::Action::OfCode(ORV_ACTION_CustomAction);
    action.Set(name, u"text");
    const orv::EventRecord record(action.Handle());
    constexpr std::uint32_t kColumns[] = {ORV_COLUMN_FirstUser, ORV_COLUMN_SecondUser, ORV_COLUMN_WindowsHost,
                                          ORV_COLUMN_WindowsUser};
    std::uint32_t columns = 0;
    for (std::size_t i = 0; i < 4; ++i) columns |= record->userField[i].text ? kColumns[i] : 0;
    return columns;
}

}  // namespace

const ParameterView* ActionView::Find(std::string_view parameter) const
{
    return FindIn(parameters, parameter);
}

bool IsExtension(const ClassView& view)
{
    // As docs/extensions.md has it: codes below are the catalogue's own.
    return view.code >= 1000;
}

bool IsExtension(const ActionView& view)
{
    return view.code >= 10000;
}

bool IsExtension(const EnumView& view)
{
    return view.id >= (0x1000 | 1000);
}

std::vector<ParameterView> GeneralParameters()
{
    std::vector<ParameterView> parameters = Parameters(ORV_GENERAL_PARAMETERS);
    for (ParameterView& parameter : parameters) parameter.columns |= ColumnsOnAnyAction(parameter.name);
    return parameters;
}

std::vector<ClassView> Classes()
{
    std::vector<ClassView> classes;
    for (const orv::ClassInfo& info : orv::AllClasses()) {
        ClassView& view = classes.emplace_back(WithTexts<ClassView>(info));
        view.code = info.code;
        view.priority = info.priority;
    }
    std::sort(classes.begin(), classes.end(), [](const auto& a, const auto& b) { return a.code < b.code; });
    return classes;
}

std::vector<ActionView> Actions()
{
    std::vector<ActionView> actions;
    for (const orv::ActionInfo& info : orv::AllActions()) actions.push_back(ViewOf(info));
    return actions;
}

std::vector<EnumView> Enums()
{
    std::vector<EnumView> enums;
    for (const orv::EnumValueInfo& info : orv::EnumValues()) {
        if (enums.empty() || enums.back().id != info.enumId) enums.push_back({EnumName(info.enumId), info.enumId, {}});
        enums.back().values.push_back(WithTexts<EnumValueView>(info));
        enums.back().values.back().value = info.value;
    }
    return enums;
}

const ActionView* FindAction(std::uint32_t code)
{
    // A map keeps its nodes in place, so a pointer that was given stays valid.
    static std::map<std::uint32_t, ActionView> seen;
    const auto found = seen.find(code);
    if (found != seen.end()) return &found->second;
    const auto info = orv::FindAction(code);
    return info ? &seen.emplace(code, ViewOf(*info)).first->second : nullptr;
}

const ParameterView* FindGeneralParameter(std::string_view name)
{
    static const std::vector<ParameterView> parameters = GeneralParameters();
    return FindIn(parameters, name);
}

std::uint32_t ActionCode(const std::string& name)
{
    const auto info = orv::FindAction(name);
    return info ? info->code : 0;
}

std::vector<std::string> ActionNames()
{
    std::vector<std::string> names;
    for (const orv::ActionInfo& info : orv::AllActions()) names.push_back(orv::ToUtf8(info.name));
    return names;
}

std::vector<std::string> ClassNames()
{
    std::vector<std::string> names;
    for (const orv::ClassInfo& info : orv::AllClasses()) names.push_back(orv::ToUtf8(info.name));
    return names;
}

std::string KindName(std::uint32_t kind)
{
#define ORV_KIND_CASE(name, number) \
    case number: return #name;
    switch (kind) {
        ORV_FOR_EACH_KIND(ORV_KIND_CASE)
    default: return "kind " + std::to_string(kind);
    }
#undef ORV_KIND_CASE
}

std::string WrittenAs(std::uint32_t kind)
{
    constexpr std::pair<std::uint32_t, const char*> kRows[] = {
        {ORV_KIND_Boolean, "0 or 1"},
        {ORV_KIND_Numeric32Bit, "-3; a leading zero means octal; the number of an enum's value"},
        {ORV_KIND_Numeric64Bit, "12345678901"},
        {ORV_KIND_NumericDouble, "1.5 or 1.5e-3 or 2"},
        {ORV_KIND_String, "\"text\""},
        {ORV_KIND_DateTime, "\"2022/10/20 11:30:00,000 GMT+00:00\""},
        {ORV_KIND_Guid, "\"01234567-89ab-cdef-0123-456789abcdef\""},
        {ORV_KIND_EventType, "\"name\", or { 12, \"name\" } with an id"},
        {ORV_KIND_MediaChannel, "7, the number, or { 4711, 7, \"name\" } with id, number, name"},
        {ORV_KIND_Resource, "\"name\", or { \"01234567-...\", \"name\" } with a guid"},
        {ORV_KIND_Rect, "{ 10, 20, 110, 220 }: top, left, bottom, right"},
        {ORV_KIND_ResultDataSet, "{ { 1, 2, 3, 4, 5, \"item\" } }"}};
    static_assert(std::size(kRows) == std::size(kKinds));
    for (const auto& [row, written] : kRows) {
        if (row == kind) return written;
    }
    return {};
}

std::string ViewName(std::uint32_t view)
{
#define ORV_VIEW_CASE(name, number) \
    case number: return #name;
    switch (view) {
        ORV_FOR_EACH_VIEW(ORV_VIEW_CASE)
    default: return "view " + std::to_string(view);
    }
#undef ORV_VIEW_CASE
}

std::string EnumName(std::uint32_t id)
{
#define ORV_ENUM_CASE(name, number) \
    case number: return #name;
    switch (id) {
    case 1: return "Boolean"; ORV_FOR_EACH_ENUM(ORV_ENUM_CASE)
    default: return "enum " + Hexadecimal(id);  // a host's own
    }
#undef ORV_ENUM_CASE
}

std::string ColumnNames(std::uint32_t columns)
{
    std::string names;
#define ORV_COLUMN_NAME(name, bit) \
    if (columns & (bit)) names += names.empty() ? #name : "|" #name;
    ORV_FOR_EACH_COLUMN(ORV_COLUMN_NAME)
#undef ORV_COLUMN_NAME
    return names;
}

std::string TypeName(std::uint32_t kind, std::uint32_t enumType)
{
    return kind == ORV_KIND_Numeric32Bit && enumType != 0 ? EnumName(enumType) : KindName(kind);
}

std::string ValueName(std::uint32_t enumType, std::uint32_t value)
{
    const auto info = orv::FindEnumValue(enumType, value);
    return info ? orv::ToUtf8(info->name) : std::string();
}

std::vector<std::string> NearNames(std::string_view name, const std::vector<std::string>& names)
{
    constexpr std::size_t kMost = 5;
    // The distance takes the product of both lengths, and a name may come from an input.
    const std::string wanted = LowerCaseAscii(name.substr(0, 100));
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : names) {
        const std::string lower = LowerCaseAscii(candidate);
        const std::size_t distance = EditDistance(wanted, lower);
        const bool part = wanted.size() >= 3 && lower.find(wanted) != std::string::npos;
        if (part || distance <= 1 + wanted.size() / 4) near.emplace_back(distance, candidate);
    }
    std::sort(near.begin(), near.end());
    near.resize(std::min(near.size(), kMost));
    std::vector<std::string> nearest;
    for (const auto& [distance, candidate] : near) nearest.push_back(candidate);
    return nearest;
}

std::string Nearest(std::string_view name, const std::vector<std::string>& names)
{
    std::string near;
    for (const std::string& candidate : NearNames(name, names)) near += (near.empty() ? "" : " or ") + candidate;
    return near;
}
