#include "forms/text_parser.h"

#include "forms/message_kinds.h"
#include "forms/object_of_kind.h"
#include "forms/text_value.h"
#include "objects/match_action.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

ParsedText ParseActionText(std::u16string_view text, std::uint32_t expectedKind)
{
    return TOrvTextParser(text).Read(expectedKind);
}

TOrvTextParser::TOrvTextParser(std::u16string_view text) : guard_(text), scanner_(guard_.Text())
{}

ParsedText TOrvTextParser::Read(std::uint32_t expectedKind)
{
    HeaderMatch header;
    // A name that is empty between its quotes is no action, and nothing counts as consumed.
    if (!scanner_.FindHeader(header) || header.name.empty()) return {};
    const std::uint32_t kind = KindOfPrefix(header.prefix);
    if (!Admits(expectedKind, kind)) return {nullptr, Consumed()};
    ObjectPtr<TOrvAction> object = MakeObjectOfKind(kind, header.name);
    FieldMatch field;
    // The search is not anchored: text before a match is skipped without an error. Unknown parameters are accepted, and
    // missing ones are not filled in. All deliberate.
    while (scanner_.FindField(field)) ReadParameter(*object, field);
    // Without its bracket it is no action, but what was read counts as consumed.
    if (!scanner_.FindClose()) object.reset();
    return {std::move(object), Consumed()};
}

// Texts mostly hold the parameters in the order of the declaration and in its spelling, so the one behind the last is
// looked at first. Beside the cursor of the map, which ends at its slots: here the declared kind is wanted as well.
TOrvTextParser::Declared TOrvTextParser::FindDeclared(const TOrvActionInternalInfo& entry, std::u16string_view name)
{
    if (name.empty()) return {};
    if (next_ < entry.Parameters.size() && !entry.HasRepeatedNames() && entry.IsSpelt(next_, name))
        return {next_++, true};
    const std::size_t position = entry.FindParameter(name);
    if (position == ParameterMap::kNotFound) return {};
    next_ = position + 1;
    return {position, entry.IsSpelt(position, name)};
}

void TOrvTextParser::ReadParameter(TOrvAction& action, const FieldMatch& field)
{
    const TOrvActionInternalInfo* entry = action.Entry();
    const Declared declared = entry ? FindDeclared(*entry, field.name) : Declared();
    const auto fill = [&](TOrvParameter& value) {
        ReadTextValue(field, guard_, value);
        if (declared.position == ParameterMap::kNotFound) return;
        const TOrvParameterInternalInfo& info = entry->Parameters[declared.position];
        value.Retype(info.Type, info.EnumType);  // a refusal leaves the kind that the text gave, deliberately
    };
    // If a name comes twice the later value and spelling win. A match action's "comment" is its description, whatever
    // kind of value it is.
    if (action.Kind() == ORV_MESSAGE_MATCH_ACTION && Ulmo::EqualsLower(field.name, kDescriptionKey)) {
        TOrvParameter value;
        fill(value);
        static_cast<TOrvMatchAction&>(action).TakeDescription(SharedName::Copy(field.name), std::move(value));
    } else if (declared.spelt) {
        action.Parameters().StoreDeclared(declared.position, fill);
    } else {
        action.Parameters().Store(field.name, fill);
    }
}

}  // namespace OrvPLC
