#include "match/matching.h"

#include "catalogue/value_kind.h"
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

// By the first of id, number and name that the pattern has; the others are not looked at.
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
    switch (ValueKind{wanted.Kind()}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit: return wanted.Small() == given.Small();
    case ValueKind::Numeric64Bit:
    case ValueKind::DateTime:
    case ValueKind::Rect: return wanted.Large() == given.Large();
    case ValueKind::NumericDouble: return wanted.Real() == given.Real();
    case ValueKind::String:
    case ValueKind::ResultDataSet: return SameWide(wanted, given);
    case ValueKind::Guid: return Ulmo::GuidTools::Equal(wanted.Guid(), given.Guid());
    case ValueKind::EventType: return wanted.Large() != 0 ? wanted.Large() == given.Large() : SameWide(wanted, given);
    case ValueKind::MediaChannel: return MatchesChannel(wanted, given);
    case ValueKind::Resource:
        return Ulmo::GuidTools::IsZero(wanted.Guid()) ? SameWide(wanted, given)
                                                      : Ulmo::GuidTools::Equal(wanted.Guid(), given.Guid());
    case ValueKind::None: break;
    }
    return false;
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
