#include "objects/generic_action.h"

#include <new>
#include <utility>

namespace OrvPLC {

namespace {

// The same for every object: callers only learn that it is an action.
const GenericKind kGenericKind{3, {}};

// Null for a record that says nothing.
const GenericChannel* UnlessEmpty(const GenericChannel& record)
{
    return record == GenericChannel() ? nullptr : &record;
}

}  // namespace

GenericChannel::GenericChannel(const TOrvChannelValue* value)
{
    if (!value) return;
    id = value->id;
    name = TerminatedView(value->name);
    number = value->number;
}

// Without a name and an entry, so there are no slots: a parameter that a caller sets becomes a node.
TOrvGenericAction::TOrvGenericAction(Content content, std::uint32_t count, const Block& block)
    : TOrvAction(ORV_MESSAGE_ACTION, {}, count, nullptr, block), content_(std::move(content))
{}

TOrvGenericAction* TOrvGenericAction::Create(Content content, std::uint32_t count)
{
    const Block block = Allocate(sizeof(TOrvGenericAction), nullptr, 0);
    return new (block.object) TOrvGenericAction(std::move(content), count, block);
}

TOrvMessage* TOrvGenericAction::Clone() const
{
    return Create(content_, 1);
}

const GenericKind* TOrvGenericAction::GetGenericKind() const
{
    return &kGenericKind;
}

const GenericChannel* TOrvGenericAction::GetGenericVideoInput() const
{
    return UnlessEmpty(content_.videoInput);
}

const GenericChannel* TOrvGenericAction::GetGenericVideoOutput() const
{
    return UnlessEmpty(content_.videoOutput);
}

const GenericChannel* TOrvGenericAction::GetGenericInputContact() const
{
    return UnlessEmpty(content_.inputContact);
}

const GenericChannel* TOrvGenericAction::GetGenericOutputContact() const
{
    return UnlessEmpty(content_.outputContact);
}

std::uint32_t TOrvGenericAction::GetGenericInt32() const
{
    return content_.value;
}

}  // namespace OrvPLC
