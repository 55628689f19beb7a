#include "catalogue/catalogue.h"

namespace OrvPLC {

namespace {

ActionPtr MakeAction(const TOrvActionCatalogue& catalogue, const Builtin::ActionRow& row)
{
    ActionPtr action = Ulmo::MakeCounted<TOrvActionInternalInfo>(row);
    const auto* actionClass = catalogue.FindActionClassByCode(row.classCode);
    action->Class = ActionClassPtr(const_cast<TOrvActionClassInternalInfo*>(actionClass));
    return action;
}

}  // namespace

// Actions come sorted by lower-cased name, so that the internal index of a built-in action is its place in that order.
void BuildCatalogue(TOrvActionCatalogue& catalogue)
{
    for (const Builtin::ClassRow& row : Builtin::Classes()) {
        catalogue.RegisterActionClass(Ulmo::MakeCounted<TOrvActionClassInternalInfo>(row));
    }
    for (const Builtin::ActionRow* row : Builtin::Actions()) catalogue.RegisterAction(MakeAction(catalogue, *row));
    catalogue.RegisterEventInfo(MakeAction(catalogue, Builtin::EventDescription()));
    for (const Builtin::ParameterRow& row : Builtin::GeneralParameters()) {
        catalogue.RegisterGeneralParameter(Ulmo::MakeCounted<TOrvParameterInternalInfo>(row));
    }
    for (const Builtin::EnumRow& row : Builtin::Enums()) catalogue.RegisterEnumType(row.name.lower, row.id);
    for (const Builtin::EnumValueRow& row : Builtin::EnumValues()) {
        catalogue.RegisterEnumValue(Ulmo::MakeCounted<TOrvEnumInternalInfo>(row));
    }
}

}  // namespace OrvPLC
