#include "objects/action.h"

#include <cstring>
#include <new>

#include "objects/match_action.h"
#include "platform/foreign_call.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

TOrvAction::TOrvAction(std::uint32_t kind, ParameterName name, std::uint32_t count, const TOrvActionInternalInfo* entry,
                       void* slots)
    : TOrvMessage(kind, std::move(name), count), entry_(entry), parameters_(entry, slots)
{}

ParameterName TOrvAction::NameFor(std::u16string_view name, const TOrvActionInternalInfo* entry)
{
    if (entry && Ulmo::SameText(name, entry->NameW.view())) return ParameterName::Shared(entry->NameW.view());
    return ParameterName::Copy(name);
}

TOrvAction::Block TOrvAction::Allocate(std::size_t objectSize, const TOrvActionInternalInfo* entry)
{
    constexpr std::size_t alignment = alignof(TOrvParameter);
    const std::size_t offset = (objectSize + alignment - 1) / alignment * alignment;
    void* object = ::operator new(offset + ParameterMap::SlotCount(entry) * sizeof(TOrvParameter));
    return {object, static_cast<char*>(object) + offset};
}

TOrvAction* TOrvAction::Make(ParameterName name, std::uint32_t count, const TOrvActionInternalInfo* entry)
{
    const Block block = Allocate(sizeof(TOrvAction), entry);
    return new (block.object) TOrvAction(ORV_MESSAGE_ACTION, std::move(name), count, entry, block.slots);
}

TOrvAction* TOrvAction::Create(std::u16string_view name, std::uint32_t count)
{
    const TOrvActionInternalInfo* entry = Catalogue().FindActionByName(name);
    return Make(NameFor(name, entry), count, entry);
}

TOrvAction* TOrvAction::Create(const TOrvActionInternalInfo& entry, std::uint32_t count)
{
    // A name that is registered leads to its own entry, so there is nothing to look up.
    return Make(ParameterName::Shared(entry.NameW.view()), count, &entry);
}

TOrvMessage* TOrvAction::Clone() const
{
    // Looking the name up again would find the same entry: entries are never removed.
    ObjectPtr<TOrvAction> clone(Make(NameFor(Name(), entry_), 1, entry_));
    clone->parameters_.CopyFrom(parameters_);
    return clone.release();
}

bool TOrvAction::Equals(const TOrvMessage& other) const
{
    // Same names after lower-casing; the spelling rarely differs.
    if (!Ulmo::SameText(Name(), other.Name()) && !Ulmo::EqualsLower(Name(), Ulmo::LowerCase(other.Name())))
        return false;
    return parameters_.SameContent(static_cast<const TOrvAction&>(other).parameters_);
}

bool TOrvAction::Supports(const TOrvGuid& id) const
{
    return std::memcmp(&id, &ORV_IID_ITalvecAction, sizeof id) == 0;
}

std::uint32_t TOrvAction::GetInternalIndex() const
{
    return entry_ ? entry_->InternalIndex : 0;
}

std::uint32_t TOrvAction::GetActionClassCode()
{
    return entry_ && entry_->Class ? entry_->Class->Code : 0;
}

const OrvWChar* TOrvAction::GetActionClassName()
{
    return Boundary(entry_ && entry_->Class ? entry_->Class->NameW.c_str() : u"");
}

std::uint32_t TOrvAction::GetActionCode()
{
    return entry_ ? entry_->Code : 0;
}

const OrvWChar* TOrvAction::GetActionName()
{
    return Boundary(entry_ ? entry_->NameW.c_str() : Name().data());
}

const OrvWChar* TOrvAction::GetActionPlainName()
{
    return Boundary(entry_ ? entry_->Plain().W.c_str() : u"");
}

const OrvWChar* TOrvAction::GetActionDescription()
{
    return Boundary(entry_ ? entry_->Description.W.c_str() : u"");
}

std::uint32_t TOrvAction::GetActionPriority()
{
    return entry_ ? entry_->Priority : 0;
}

std::uint32_t TOrvAction::GetActionFlags()
{
    return entry_ ? entry_->Flags : 0;
}

ITalvecMatchAction* TOrvAction::CreateMatchAction()
{
    return TOrvMatchAction::CreateFrom(*this, 0);
}

std::uint32_t TOrvAction::GetParameterCount()
{
    return static_cast<std::uint32_t>(parameters_.Size());
}

void TOrvAction::EnumerateParameters(ITalvecParameterEnumerator* enumerator)
{
    if (!enumerator) return;
    const auto tell = [enumerator](std::u16string_view, const TOrvParameter& value) {
        Platform::CallForeign(
            [&] { enumerator->OnParameter(Boundary(value.Name().c_str()), value.Kind(), value.EnumType()); });
    };
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
