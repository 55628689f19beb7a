#include "objects/match_action.h"

#include <cstring>
#include <new>

#include "ulmo/string_conversion.h"

namespace OrvPLC {

TOrvMatchAction::TOrvMatchAction(ParameterName name, std::uint32_t count, const TOrvActionInternalInfo* entry,
                                 void* slots)
    : TOrvAction(ORV_MESSAGE_MATCH_ACTION, std::move(name), count, entry, slots),
      description_(ParameterName::Shared(u"Comment"))
{
    description_.SetString({});
}

TOrvMatchAction* TOrvMatchAction::Make(ParameterName name, std::uint32_t count, const TOrvActionInternalInfo* entry)
{
    const Block block = Allocate(sizeof(TOrvMatchAction), entry);
    return new (block.object) TOrvMatchAction(std::move(name), count, entry, block.slots);
}

TOrvMatchAction* TOrvMatchAction::Create(std::u16string_view name, std::uint32_t count)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByName(name);
    return Make(NameFor(name, entry), count, entry);
}

TOrvMatchAction* TOrvMatchAction::CreateFrom(const TOrvAction& source, std::uint32_t count)
{
    // By name, not with the source's entry: the entry of event records belongs to no match action.
    ObjectPtr<TOrvMatchAction> match(Create(source.Name(), count));
    match->Parameters().CopyFrom(source.Parameters());
    return match.release();
}

const char* TOrvMatchAction::NarrowDescription()
{
    narrowDescription_ = Ulmo::AnsiFromWide(description_.Wide());
    return narrowDescription_.c_str();
}

TOrvMessage* TOrvMatchAction::Clone() const
{
    ObjectPtr<TOrvMatchAction> clone(CreateFrom(*this, 1));
    clone->description_ = description_;
    return clone.release();
}

bool TOrvMatchAction::Equals(const TOrvMessage& other) const
{
    const TOrvParameter& description = static_cast<const TOrvMatchAction&>(other).description_;
    return description_.SameValue(description) &&
           Ulmo::LowerCase(description_.Name().view()) == Ulmo::LowerCase(description.Name().view()) &&
           TOrvAction::Equals(other);
}

bool TOrvMatchAction::Supports(const TOrvGuid& id) const
{
    return TOrvAction::Supports(id) || std::memcmp(&id, &ORV_IID_ITalvecMatchAction, sizeof id) == 0;
}

}  // namespace OrvPLC
