#include "catalogue_view.h"

#include <OrvActions.h>

#include <algorithm>
#include <map>

#include "text.h"

namespace {

template <class Record>
void TakeTexts(const Record& record, std::string& name, std::string& plainName, std::string& description)
{
    name = Utf8FromWide(record.NameW);
    plainName = Utf8FromWide(record.PlainNameW);
    description = Utf8FromWide(record.DescriptionW);
}

std::vector<ParameterView> Parameters(std::uint32_t code)
{
    std::vector<TTalvecParameterPlainInfo> records(Talvec_Action_GetNumberOfActionParameters(code));
    records.resize(
        Talvec_Action_EnumerateActionParameters(records.data(), static_cast<std::uint32_t>(records.size()), code));
    std::vector<ParameterView> parameters;
    for (const TTalvecParameterPlainInfo& record : records) {
        ParameterView& parameter = parameters.emplace_back();
        TakeTexts(record, parameter.name, parameter.plainName, parameter.description);
        parameter.type = record.Type;
        parameter.view = record.View;
        parameter.priority = record.Priority;
        parameter.enumType = record.EnumType;
        parameter.columns = record.DbField;
    }
    return parameters;
}

ActionView ViewOf(const TTalvecActionPlainInfo& record)
{
    ActionView action;
    TakeTexts(record, action.name, action.plainName, action.description);
    action.code = record.Code;
    action.classCode = record.ClassCode;
    action.priority = record.Priority;
    TTalvecActionClassPlainInfo actionClass{};
    if (Talvec_Action_GetActionClassInfo(&actionClass, record.ClassCode)) {
        action.className = Utf8FromWide(actionClass.NameW);
    }
    action.parameters = Parameters(record.Code);
    return action;
}

const ParameterView* FindIn(const std::vector<ParameterView>& parameters, std::string_view name)
{
    const std::string lower = LowerCaseAscii(name);
    for (const ParameterView& parameter : parameters) {
        if (LowerCaseAscii(parameter.name) == lower) return &parameter;
    }
    return nullptr;
}

std::string Hexadecimal(std::uint32_t number)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(number));
    return text;
}

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

}  // namespace

const ParameterView* ActionView::Find(std::string_view parameter) const
{
    return FindIn(parameters, parameter);
}

std::vector<ClassView> Classes()
{
    std::vector<TTalvecActionClassPlainInfo> records(Talvec_Action_GetNumberOfActionClasses());
    records.resize(Talvec_Action_EnumerateActionClasses(records.data(), static_cast<std::uint32_t>(records.size())));
    std::vector<ClassView> classes;
    for (const TTalvecActionClassPlainInfo& record : records) {
        ClassView& view = classes.emplace_back();
        TakeTexts(record, view.name, view.plainName, view.description);
        view.code = record.Code;
        view.priority = record.Priority;
    }
    std::sort(classes.begin(), classes.end(), [](const auto& a, const auto& b) { return a.code < b.code; });
    return classes;
}

std::vector<ActionView> Actions()
{
    std::vector<TTalvecActionPlainInfo> records(Talvec_Action_GetNumberOfActions());
    records.resize(Talvec_Action_EnumerateActions(records.data(), static_cast<std::uint32_t>(records.size())));
    std::vector<ActionView> actions;
    for (const TTalvecActionPlainInfo& record : records) actions.push_back(ViewOf(record));
    return actions;
}

std::vector<EnumView> Enums()
{
    std::vector<TTalvecEnumValuePlainInfo> records(Talvec_Action_GetNumberOfEnumValues(ORV_ENUM_KIND_ALL, 0));
    records.resize(Talvec_Action_EnumerateEnumValues(records.data(), static_cast<std::uint32_t>(records.size()),
                                                     ORV_ENUM_KIND_ALL, 0));
    std::vector<EnumView> enums;
    for (const TTalvecEnumValuePlainInfo& record : records) {
        if (enums.empty() || enums.back().id != record.EnumId) {
            enums.push_back({EnumName(record.EnumId), record.EnumId, {}});
        }
        EnumValueView& value = enums.back().values.emplace_back();
        TakeTexts(record, value.name, value.plainName, value.description);
        value.value = record.Value;
    }
    return enums;
}

const ActionView* FindAction(std::uint32_t code)
{
    static std::map<std::uint32_t, ActionView> seen;
    const auto found = seen.find(code);
    if (found != seen.end()) return &found->second;
    TTalvecActionPlainInfo record{};
    if (!Talvec_Action_GetActionInfo(&record, code)) return nullptr;
    return &seen.emplace(code, ViewOf(record)).first->second;
}

const ParameterView* FindGeneralParameter(std::string_view name)
{
    static const std::vector<ParameterView> parameters = Parameters(ORV_GENERAL_PARAMETERS);
    return FindIn(parameters, name);
}

std::uint32_t ActionCode(const std::string& name)
{
    bool clean = true;
    return OrvAct_GetActionCodeByNameW(Boundary(WideFromUtf8(name, clean).c_str()));
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
    TTalvecEnumValuePlainInfo record{};
    const bool known = Talvec_Action_GetEnumValueInfo(&record, ORV_ENUM_KIND_BY_ID, enumType, value);
    return known ? Utf8FromWide(record.NameW) : std::string();
}

std::vector<std::string> NearNames(std::string_view name, const std::vector<std::string>& names)
{
    constexpr std::size_t kMost = 5;
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
