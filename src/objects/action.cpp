#include "objects/action.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "objects/match_action.h"
#include "platform/foreign_call.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

SharedName TOrvAction::NameFor(std::u16string_view name, const TOrvActionInternalInfo* entry)
{
    if (entry && Ulmo::SameText(name, entry->NameW.view())) return SharedName::Shared(entry->NameW.view());
    return SharedName::Copy(name);
}

namespace {

// After lower-casing.
bool SameName(std::u16string_view a, std::u16string_view b)
{
    return Ulmo::SameText(a, b) || Ulmo::EqualsLower(a, Ulmo::LowerCase(b));
}

}  // namespace

TOrvAction* TOrvAction::Make(SharedName name, std::uint32_t count, const TOrvActionInternalInfo* entry,
                             std::size_t textBytes)
{
    static_assert(sizeof(TOrvAction) % alignof(TOrvParameter) == 0);
    const Block block = Allocate(sizeof(TOrvAction), entry, textBytes);
    return new (block.object) TOrvAction(ORV_MESSAGE_ACTION, std::move(name), count, entry, block);
}

TOrvAction* TOrvAction::Create(std::u16string_view name, std::uint32_t count)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByName(name);
    return Make(NameFor(name, entry), count, entry, ParameterMap::UsualTextBytes(entry));
}

TOrvAction* TOrvAction::Create(const TOrvActionInternalInfo& entry, std::uint32_t count)
{
    // A name that is registered leads to its own entry, so there is nothing to look up.
    return Make(SharedName::Shared(entry.NameW.view()), count, &entry, ParameterMap::UsualTextBytes(&entry));
}

TOrvAction* TOrvAction::CreateWithRoom(std::u16string_view name, std::size_t textBytes)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByName(name);
    return Make(NameFor(name, entry), 1, entry, textBytes);
}

TOrvAction* TOrvAction::CreateWithRoom(const TOrvActionInternalInfo& entry, std::size_t textBytes)
{
    return Make(SharedName::Shared(entry.NameW.view()), 1, &entry, textBytes);
}

TOrvMessage* TOrvAction::Clone() const
{
    // Looking the name up again would find the same entry: entries are never removed.
    // Room for the texts of slots only: those of nodes live on the heap.
    ObjectPtr<TOrvAction> clone(Make(OwnName(), 1, Entry(), parameters_.TextBytes()));
    clone->parameters_.CopyFrom(parameters_);
    return clone.release();
}

bool TOrvAction::Equals(const TOrvMessage& other) const
{
    // The spelling rarely differs, and then both names are mostly the catalogue's own text.
    const bool sameText = Name().data() == other.Name().data() && Name().size() == other.Name().size();
    return (sameText || SameName(Name(), other.Name())) &&
           parameters_.SameContent(static_cast<const TOrvAction&>(other).parameters_);
}

bool TOrvAction::Supports(const TOrvGuid& id) const
{
    return std::memcmp(&id, &ORV_IID_ITalvecAction, sizeof id) == 0;
}

std::uint32_t TOrvAction::GetInternalIndex() const
{
    return Entry() ? Entry()->InternalIndex : 0;
}

std::uint32_t TOrvAction::GetActionClassCode()
{
    return Entry() && Entry()->Class ? Entry()->Class->Code : 0;
}

const OrvWChar* TOrvAction::GetActionClassName()
{
    return Boundary(Entry() && Entry()->Class ? Entry()->Class->NameW.c_str() : u"");
}

std::uint32_t TOrvAction::GetActionCode()
{
    return Entry() ? Entry()->Code : 0;
}

const OrvWChar* TOrvAction::GetActionName()
{
    // The catalogue's spelling wins over the one at creation. A name ends in a zero unit, so its view has a c_str.
    return Boundary(Entry() ? Entry()->NameW.c_str() : Name().data());
}

const OrvWChar* TOrvAction::GetActionPlainName()
{
    return Boundary(Entry() ? Entry()->Plain().W.c_str() : u"");
}

const OrvWChar* TOrvAction::GetActionDescription()
{
    return Boundary(Entry() ? Entry()->Description.W.c_str() : u"");
}

std::uint32_t TOrvAction::GetActionPriority()
{
    return Entry() ? Entry()->Priority : 0;
}

std::uint32_t TOrvAction::GetActionFlags()
{
    return Entry() ? Entry()->Flags : 0;
}

ITalvecMatchAction* TOrvAction::CreateMatchAction()
{
    // With count 0: the caller's smart pointer takes the first reference.
    return TOrvMatchAction::CreateFrom(*this, 0);
}

std::uint32_t TOrvAction::GetParameterCount()
{
    return static_cast<std::uint32_t>(parameters_.Size());
}

void TOrvAction::EnumerateParameters(ITalvecParameterEnumerator* enumerator)
{
    if (!enumerator) return;
    const auto tell = [enumerator](std::u16string_view, std::u16string_view name, const TOrvParameter& value,
                                   std::size_t) {
        Platform::CallForeign([&] { enumerator->OnParameter(Boundary(name.data()), value.Kind(), value.EnumType()); });
    };
    // A callback that throws ends the walk, and nobody learns of it.
    InOperation([&] { parameters_.ForEachByKey(tell); });
}

bool TOrvAction::HasParameter(const OrvWChar* name)
{
    return parameters_.Find(TerminatedView(name)) != nullptr;
}

void TOrvAction::RemoveParameter(const OrvWChar* name)
{
    parameters_.Remove(TerminatedView(name));
}

std::uint32_t TOrvAction::GetParameterType(const OrvWChar* name)
{
    const TOrvParameter* value = parameters_.Find(TerminatedView(name));
    return value ? value->Kind() : 0;
}

std::uint32_t TOrvAction::GetParameterEnum(const OrvWChar* name)
{
    const TOrvParameter* value = parameters_.Find(TerminatedView(name));
    return value ? value->EnumType() : 0;
}

// What an action that is no pattern answers.
const OrvWChar* TOrvAction::GetDescription()
{
    return Boundary(u"");
}

void TOrvAction::SetDescription(const OrvWChar*)
{}

bool TOrvAction::Matches(ITalvecAction*)
{
    return false;
}

bool TOrvAction::HasDescription()
{
    return false;
}

ITalvecAction* TOrvAction::CreateActionFromTemplate(ITalvecAction*)
{
    return nullptr;
}

}  // namespace OrvPLC
