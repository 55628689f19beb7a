// The catalogue as the tool shows it: records of the interface turned into values of our own, all texts in UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct ParameterView {
    std::string name;
    std::string plainName;
    std::string description;
    std::uint32_t type = 0;
    std::uint32_t view = 0;
    std::uint32_t priority = 0;
    std::uint32_t enumType = 0;
    std::uint32_t columns = 0;
};

struct ActionView {
    std::string name;
    std::string plainName;
    std::string description;
    std::string className;
    std::uint32_t code = 0;
    std::uint32_t classCode = 0;
    std::uint32_t priority = 0;
    std::vector<ParameterView> parameters;

    const ParameterView* Find(std::string_view parameter) const;  // by name in any case
};

struct ClassView {
    std::string name;
    std::string plainName;
    std::string description;
    std::uint32_t code = 0;
    std::uint32_t priority = 0;
};

struct EnumValueView {
    std::string name;
    std::string plainName;
    std::string description;
    std::uint32_t value = 0;
};

struct EnumView {
    std::string name;
    std::uint32_t id = 0;
    std::vector<EnumValueView> values;
};

// Whether it comes from an extension file: their codes begin above those of the built-in content.
bool IsExtension(const ClassView& view);
bool IsExtension(const ActionView& view);
bool IsExtension(const EnumView& view);

std::vector<ParameterView> GeneralParameters();
std::vector<ClassView> Classes();   // by code
std::vector<ActionView> Actions();  // by name
std::vector<EnumView> Enums();      // by id, the Boolean enum first

const ActionView* FindAction(std::uint32_t code);  // stays valid; null when unknown
const ParameterView* FindGeneralParameter(std::string_view name);
std::uint32_t ActionCode(const std::string& name);  // 0 when unknown

// All names, for a suggestion in place of one that does not exist.
std::vector<std::string> ActionNames();
std::vector<std::string> ClassNames();

std::string KindName(std::uint32_t kind);
std::string WrittenAs(std::uint32_t kind);  // in action text
std::string ViewName(std::uint32_t view);
std::string EnumName(std::uint32_t id);
std::string ColumnNames(std::uint32_t columns);                      // joined by "|", "" for none
std::string TypeName(std::uint32_t kind, std::uint32_t enumType);    // the enum's name where there is one
std::string ValueName(std::uint32_t enumType, std::uint32_t value);  // "" for none

// Names of the list that the user may have meant, nearest first.
std::vector<std::string> NearNames(std::string_view name, const std::vector<std::string>& names);
std::string Nearest(std::string_view name, const std::vector<std::string>& names);  // the best few, joined; "" for none
