#include "match/matching.h"

#include "match/case_blind.h"
#include "ulmo/guid_tools.h"

namespace OrvPLC {

namespace {

// Most matches fail here. An entry is found by the name in any case, so two entries say all about two names.
bool SameName(const TOrvAction& a, const TOrvAction& b)
{
    if (a.Entry() && b.Entry()) return a.Entry() == b.Entry();
    return SameInAnyCase(a.Name(), b.Name());
}

bool SameWide(const TOrvParameter& wanted, const TOrvParameter& given)
{
    return SameInAnyCase(wanted.Wide(), given.Wide());
}

bool MatchesChannel(const TOrvParameter& wanted, const TOrvParameter& given)
{
    if (wanted.Large() != 0) return wanted.Large() == given.Large();
    if (wanted.Small() != 0) return wanted.Small() == given.Small();
    return SameWide(wanted, given);
}

}  // namespace

bool MatchesValue(const TOrvParameter& wanted, const TOrvParameter& given)
{
    // No conversion, deliberately: a 32-bit 5 does not match a 64-bit 5.
    if (wanted.Kind() != given.Kind()) return false;
    switch (wanted.Kind()) {
    case ORV_KIND_Boolean:
    case ORV_KIND_Numeric32Bit: return wanted.Small() == given.Small();
    case ORV_KIND_Numeric64Bit:
    case ORV_KIND_DateTime:
    case ORV_KIND_Rect: return wanted.Large() == given.Large();
    case ORV_KIND_NumericDouble: return wanted.Real() == given.Real();
    case ORV_KIND_String:
    case ORV_KIND_ResultDataSet: return SameWide(wanted, given);
    case ORV_KIND_Guid: return Ulmo::GuidTools::Equal(wanted.Guid(), given.Guid());
    case ORV_KIND_EventType: return wanted.Large() != 0 ? wanted.Large() == given.Large() : SameWide(wanted, given);
    case ORV_KIND_MediaChannel: return MatchesChannel(wanted, given);
    case ORV_KIND_Resource:
        return Ulmo::GuidTools::IsZero(wanted.Guid()) ? SameWide(wanted, given)
                                                      : Ulmo::GuidTools::Equal(wanted.Guid(), given.Guid());
    default: return false;
    }
}

bool Matches(const TOrvMatchAction& pattern, const TOrvAction& action)
{
    return SameName(pattern, action) && pattern.Parameters().AllFit(action.Parameters(), MatchesValue);
}

bool ORV_CALL TOrvMatchAction::Matches(ITalvecAction* action)
{
    return action && OrvPLC::Matches(*this, ActionOf(reinterpret_cast<TOrvHandle>(action)));
}

}  // namespace OrvPLC
