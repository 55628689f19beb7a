#include "action_code.h"

#include <cstdio>

namespace {

std::string Hexadecimal(std::uint32_t number, int digits)
{
    char text[24];
    std::snprintf(text, sizeof text, "0x%0*x", digits, static_cast<unsigned>(number));
    return text;
}

// Of printable ASCII as it is; what C reads differently gets a backslash, other units as numbers.
std::string Literal(std::u16string_view text)
{
    std::string literal = "u\"";
    for (const char16_t unit : text) {
        // Two question marks would begin a trigraph, which C reads as another character.
        if (unit == u'"' || unit == u'\\' || unit == u'?') literal += '\\';
        if (unit >= 0x20 && unit < 0x7F) {
            literal += static_cast<char>(unit);
        } else {
            literal += "\\x" + Hexadecimal(unit, 4).substr(2) + "\" u\"";  // ends there, whatever follows
        }
    }
    return literal + "\"";
}

// As an initialiser of C and of C++.
std::string Braced(const orv::Guid& guid)
{
    std::string text = "{" + Hexadecimal(guid.Data1, 8) + ", " + Hexadecimal(guid.Data2, 4) + ", " +
                       Hexadecimal(guid.Data3, 4) + ", {";
    for (std::size_t i = 0; i < 8; ++i) text += (i > 0 ? ", " : "") + Hexadecimal(guid.Data4[i], 2);
    return text + "}}";
}

std::string EnumConstant(std::uint32_t id)
{
    const std::string name = EnumName(id);
    // The Boolean enum has no constant, and neither has an enum of the host's own, which is called "enum 0x...".
    const bool constant = id != 1 && name.find(' ') == std::string::npos;
    return constant ? "ORV_ENUM_" + name : Hexadecimal(id, 4);
}

std::string Real(double number)
{
    const std::string text = RealText(number);
    // Without a point C would take it for an integer.
    return text.find_first_of(".e") == std::string::npos ? text + ".0" : text;
}

std::string Long(std::int64_t number)
{
    return std::to_string(number);
}

// The operation of the interface and what follows the name of the parameter.
struct InC {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool value) const { return Call("Boolean", value ? "1" : "0"); }
    std::string operator()(std::int32_t value) const { return Call("Int32", std::to_string(value)); }
    std::string operator()(std::int64_t value) const { return Call("Int64", "&(int64_t){" + Long(value) + "}"); }
    std::string operator()(double value) const { return Call("Double", "&(double){" + Real(value) + "}"); }
    std::string operator()(const std::u16string& value) const { return Call("String", Literal(value)); }
    std::string operator()(orv::DateTime value) const
    {
        return Call("DateTime", "&(TUlmoDateTime){" + std::to_string(value.value) + "}");
    }
    std::string operator()(const orv::Guid& value) const { return Call("Guid", "&(TOrvGuid)" + Braced(value)); }
    std::string operator()(const orv::EventType& value) const
    {
        return Call("EventType",
                    "&(TOrvEventTypeValue){" + std::to_string(value.id) + ", " + Literal(value.name) + ", 0}");
    }
    std::string operator()(const orv::Channel& value) const
    {
        return Call("MediaChannel", "&(TOrvChannelValue){" + std::to_string(value.id) + ", " + Literal(value.name) +
                                        ", " + std::to_string(value.number) + "}");
    }
    std::string operator()(const orv::Resource& value) const
    {
        return Call("Resource", "&(TOrvResourceValue){" + Braced(value.guid) + ", " + Literal(value.name) + "}");
    }
    std::string operator()(const orv::Rect& value) const
    {
        orv::detail::Record record;
        orv::detail::ValueOf<orv::Rect>::Write(record, value);
        return Call("Rect", "&(int64_t){" + Long(record->payload.int64) + "}");
    }
    std::string operator()(const orv::Enum& value) const
    {
        return Call("Enum", std::to_string(value.value) + ", " + EnumConstant(value.enumId));
    }
    std::string operator()(const orv::ResultData&) const
    {
        return Call("ResultDataSet", "&(TOrvResultDataItem){1, 2, 3, 4, 5, NULL}, 1");
    }

    std::string Call(const char* kind, const std::string& value) const
    {
        return std::string("action->table->Set") + kind + "(action, " + Literal(name) + ", " + value + ");\n";
    }

    const std::u16string& name;
};

struct InCpp {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(std::int64_t value) const { return "std::int64_t{" + Long(value) + "}"; }
    std::string operator()(double value) const { return Real(value); }
    std::string operator()(const std::u16string& value) const { return Literal(value); }
    std::string operator()(orv::DateTime value) const { return "orv::DateTime{" + std::to_string(value.value) + "}"; }
    std::string operator()(const orv::Guid& value) const { return "orv::Guid" + Braced(value); }
    std::string operator()(const orv::EventType& value) const
    {
        return "orv::EventType{" + std::to_string(value.id) + ", " + Literal(value.name) + "}";
    }
    std::string operator()(const orv::Channel& value) const
    {
        return "orv::Channel::Number(" + std::to_string(value.number) + ")";
    }
    std::string operator()(const orv::Resource& value) const
    {
        return "orv::Resource{" + Braced(value.guid) + ", " + Literal(value.name) + "}";
    }
    std::string operator()(const orv::Rect& value) const
    {
        return "orv::Rect{" + std::to_string(value.top) + ", " + std::to_string(value.left) + ", " +
               std::to_string(value.bottom) + ", " + std::to_string(value.right) + "}";
    }
    std::string operator()(const orv::Enum& value) const
    {
        return "orv::Enum{" + std::to_string(value.value) + ", " + EnumConstant(value.enumId) + "}";
    }
    std::string operator()(const orv::ResultData&) const { return "orv::ResultData{{1, 2, 3, 4, 5, u\"item\"}}"; }
};

// In the order in which the catalogue declares the parameters.
template <class Take>
void ForEachValue(const ActionView& view, const Action& example, Take take)
{
    for (const ParameterView& parameter : view.parameters) {
        const std::u16string name = orv::ToUtf16(parameter.name);
        take(name, orv::detail::ValueOfKind(example.Handle(), name, example.KindOf(name), example.EnumOf(name)));
    }
}

}  // namespace

std::string CodeInC(const ActionView& view, const Action& example)
{
    std::string code = "TOrvHandle handle = Talvec_Action_CreateActionByName(" + Literal(orv::ToUtf16(view.name)) +
                       ");\nITalvecAction* action = Talvec_Action_ConvertToIOrvAction(handle);\n";
    // Nothing is set, so the interface would be a variable that nobody uses.
    if (view.parameters.empty()) code = code.substr(0, code.find('\n') + 1);
    ForEachValue(view, example,
                 [&](const std::u16string& name, const orv::Value& value) { code += std::visit(InC{name}, value); });
    return code + "OrvAct_CloseHandle(handle);\n";
}

std::string CodeInCpp(const ActionView& view, const Action& example)
{
    std::string code = "orv::Action action = orv::Action::Named(" + Literal(orv::ToUtf16(view.name)) + ");\n";
    ForEachValue(view, example, [&](const std::u16string& name, const orv::Value& value) {
        code += "action.Set(" + Literal(name) + ", " + std::visit(InCpp(), value) + ");\n";
    });
    return code;
}
