#include "objects/match_action.h"

#include <cstring>
#include <new>

#include "ulmo/string_conversion.h"

namespace OrvPLC {

TOrvMatchAction::TOrvMatchAction(SharedName name, std::uint32_t count, const TOrvActionInternalInfo* entry,
                                 const Block& block)
    : TOrvAction(ORV_MESSAGE_MATCH_ACTION, std::move(name), count, entry, block)
{
    // A String from the start, since a value without a kind has no text.
    description_.SetString({});
}

TOrvMatchAction* TOrvMatchAction::Make(SharedName name, std::uint32_t count, const TOrvActionInternalInfo* entry,
                                       std::size_t textBytes)
{
    const Block block = Allocate(sizeof(TOrvMatchAction), entry, textBytes);
    return new (block.object) TOrvMatchAction(std::move(name), count, entry, block);
}

TOrvMatchAction* TOrvMatchAction::Create(std::u16string_view name, std::uint32_t count)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByName(name);
    return Make(NameFor(name, entry), count, entry, ParameterMap::UsualTextBytes(entry));
}

TOrvMatchAction* TOrvMatchAction::CreateWithRoom(std::u16string_view name, std::size_t textBytes, std::uint32_t count)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByName(name);
    return Make(NameFor(name, entry), count, entry, textBytes);
}

TOrvMatchAction* TOrvMatchAction::CreateFrom(const TOrvAction& source, std::uint32_t count)
{
    // By name, not with the source's entry: the entry of event records belongs to no match action.
    ObjectPtr<TOrvMatchAction> match(CreateWithRoom(source.Name(), source.Parameters().TextBytes(), count));
    match->Parameters().CopyFrom(source.Parameters());
    return match.release();
}

const char* TOrvMatchAction::NarrowDescription()
{
    // Not kept from the last call: the description may have been set since.
    narrowDescription_ = Ulmo::AnsiFromWide(description_.Wide());
    return narrowDescription_.c_str();
}

TOrvMessage* TOrvMatchAction::Clone() const
{
    ObjectPtr<TOrvMatchAction> clone(CreateFrom(*this, 1));
    clone->description_ = description_;
    clone->descriptionName_ = descriptionName_;
    return clone.release();
}

bool TOrvMatchAction::Equals(const TOrvMessage& other) const
{
    const auto& match = static_cast<const TOrvMatchAction&>(other);
    return description_.SameValue(match.description_) &&
           Ulmo::LowerCase(DescriptionName()) == Ulmo::LowerCase(match.DescriptionName()) &&
           TOrvAction::Equals(other);
}

bool TOrvMatchAction::Supports(const TOrvGuid& id) const
{
    return TOrvAction::Supports(id) || std::memcmp(&id, &ORV_IID_ITalvecMatchAction, sizeof id) == 0;
}

}  // namespace OrvPLC
