#include "forms/text_parser.h"

#include "forms/expected_kind.h"
#include "forms/text_patterns.h"
#include "forms/text_value.h"
#include "objects/match_action.h"
#include "objects/orv_plc_exception.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

constexpr std::uint32_t kQuestionKind = 5;
constexpr std::uint32_t kOrderKind = 6;
constexpr std::uint32_t kRecursionSubCode = 3;

std::uint32_t KindOfPrefix(std::u16string_view prefix)
{
    if (prefix.empty()) return ORV_MESSAGE_ACTION;
    switch (prefix.front()) {
    case u'@': return ORV_MESSAGE_MATCH_ACTION;
    case u'?': return kQuestionKind;
    default: return kOrderKind;
    }
}

ObjectPtr<TOrvAction> MakeObject(std::uint32_t kind, std::u16string_view name)
{
    if (kind == ORV_MESSAGE_MATCH_ACTION) return ObjectPtr<TOrvAction>(TOrvMatchAction::Create(name));
    return ObjectPtr<TOrvAction>(TOrvAction::Create(name));
}

// Sets the value that a parameter of this name goes to. A later mention replaces an earlier one, its spelling included,
// and the comment of a match action is its description, whatever it holds.
template <class Fill>
void StoreParameter(TOrvAction& action, std::u16string_view name, std::size_t declared, Fill&& fill)
{
    if (action.Kind() == ORV_MESSAGE_MATCH_ACTION && Ulmo::EqualsLower(name, kDescriptionKey)) {
        TOrvParameter value(ParameterName::Copy(name));
        fill(value);
        static_cast<TOrvMatchAction&>(action).Description() = std::move(value);
    } else if (declared != ParameterMap::kNotFound &&
               Ulmo::SameText(action.Entry()->Parameters[declared].NameW.view(), name)) {
        action.Parameters().StoreDeclared(declared, fill);
    } else {
        action.Parameters().Store(name, fill);
    }
}

}  // namespace

ParsedText ParseActionText(std::u16string_view text, std::uint32_t expectedKind)
{
    return TOrvTextParser(text).Read(expectedKind);
}

TOrvTextParser::TOrvTextParser(std::u16string_view text)
    : search_(text.size()), guard_(text, search_), remaining_(guard_.Text()), totalLength_(text.size())
{}

ParsedText TOrvTextParser::Read(std::uint32_t expectedKind)
{
    Header header;
    if (!ReadHeader(header)) return {};
    if (!Admits(expectedKind, header.kind)) return {nullptr, Consumed()};
    ObjectPtr<TOrvAction> object = MakeObject(header.kind, header.name);
    if (!ReadBody(*object)) object.reset();
    return {std::move(object), Consumed()};
}

bool TOrvTextParser::ReadHeader(Header& header)
{
    if (!search_.Find(Patterns().header, remaining_)) return false;
    header.name = search_[2].empty() ? search_[3] : search_[2];
    if (header.name.empty()) return false;
    header.kind = KindOfPrefix(search_[1]);
    remaining_ = search_.Rest();
    return true;
}

bool TOrvTextParser::ReadBody(TOrvAction& action)
{
    while (ReadParameter(action)) {
    }
    return ReadClose();
}

// The search is not anchored: what stands in front of the match is skipped without complaint. Deliberate, as is that
// nothing is rejected for being unknown and nothing filled in for being absent.
bool TOrvTextParser::ReadParameter(TOrvAction& action)
{
    using namespace ParameterGroup;
    if (!search_.Find(Patterns().parameter, remaining_)) return false;
    const std::u16string_view name = search_[BareName].empty() ? search_[QuotedName] : search_[BareName];
    const std::u16string_view rest = search_.Rest();
    const TOrvActionInternalInfo* entry = action.Entry();
    const std::size_t declared = entry && !name.empty() ? entry->FindParameter(name) : ParameterMap::kNotFound;
    StoreParameter(action, name, declared, [&](TOrvParameter& value) {
        ReadTextValue(search_, guard_, value);
        if (declared == ParameterMap::kNotFound) return;
        const TOrvParameterInternalInfo& info = entry->Parameters[declared];
        value.Retype(info.Type, info.EnumType);  // a refusal leaves the kind that the text gave, deliberately
    });
    if (rest.size() >= remaining_.size()) throw OrvPLCException(u"Recursion while parsing", kRecursionSubCode);
    remaining_ = rest;
    return true;
}

bool TOrvTextParser::ReadClose()
{
    if (!search_.Find(Patterns().close, remaining_)) return false;
    remaining_ = search_.Rest();
    return true;
}

std::uint32_t TOrvTextParser::Consumed() const
{
    return static_cast<std::uint32_t>(totalLength_ - remaining_.size());
}

}  // namespace OrvPLC
