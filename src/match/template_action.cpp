// Making a concrete action out of a match action, with what the match action leaves open taken from an example.
#include "objects/generic_action.h"
#include "objects/match_action.h"
#include "objects/roles.h"

namespace OrvPLC {

namespace {

// The declared parameters that the action lacks. A value comes with the spelling of its name.
void TakeMissing(TOrvAction& action, const ParameterMap& example)
{
    if (!action.Entry()) return;
    for (const TOrvParameterInternalInfo& declared : action.Entry()->Parameters) {
        const std::u16string_view key = declared.LowerName.view();
        if (!action.Parameters().Find(key)) action.Parameters().CopyOne(example, key);
    }
}

bool HoldsRole(const TOrvAction& action, Roles::Views role)
{
    const ParameterRange& declared = action.Entry()->Parameters;
    for (std::size_t position = 0; position < declared.size(); ++position) {
        if ((Roles::Bit(declared[position].View) & role) && action.Parameters().FindDeclared(position)) return true;
    }
    return false;
}

// Nothing for a record that is empty, or a role that the action fills already.
void TakeChannel(TOrvAction& action, Roles::Views role, const GenericChannel* channel)
{
    if (!channel || HoldsRole(action, role)) return;
    Roles::WriteChannel(action, role, {channel->id, Boundary(channel->name.c_str()), channel->number});
}

// Into the first declared 32-bit parameter, unless it is set: then the number goes nowhere.
void TakeNumber(TOrvAction& action, std::uint32_t number)
{
    const ParameterRange& declared = action.Entry()->Parameters;
    for (std::size_t position = 0; position < declared.size(); ++position) {
        if (declared[position].Type != ORV_KIND_Numeric32Bit) continue;
        if (action.Parameters().FindDeclared(position)) return;
        action.Parameters().StoreDeclared(position, [number](TOrvParameter& value) {
            value.SetInt32(static_cast<std::int32_t>(number));  // without the enum of an enum parameter
        });
        return;
    }
}

// What an example without parameters carries by role.
void TakeRoles(TOrvAction& action, const TOrvGenericAction& example)
{
    if (!action.Entry()) return;
    TakeChannel(action, Roles::kVideoInput, example.GetGenericVideoInput());
    TakeChannel(action, Roles::kVideoOutput, example.GetGenericVideoOutput());
    TakeChannel(action, Roles::kInputContact, example.GetGenericInputContact());
    TakeChannel(action, Roles::kOutputContact, example.GetGenericOutputContact());
    TakeNumber(action, example.GetGenericInt32());
}

}  // namespace

ITalvecAction* ORV_CALL TOrvMatchAction::CreateActionFromTemplate(ITalvecAction* templateAction)
{
    // With the pattern's parameters, of which none is overwritten below.
    ObjectPtr<TOrvAction> action(TOrvAction::Create(Name()));
    action->Parameters().CopyFrom(Parameters());
    if (templateAction) {
        const TOrvAction& example = ActionOf(reinterpret_cast<TOrvHandle>(templateAction));
        // A parameter that the example has by name comes before what it carries by role, since a role that is held is
        // not taken.
        TakeMissing(*action, example.Parameters());
        // The message kind does not tell a generic action from any other.
        const auto* generic = dynamic_cast<const TOrvGenericAction*>(&example);
        if (generic) TakeRoles(*action, *generic);
    }
    return action.release();
}

}  // namespace OrvPLC
