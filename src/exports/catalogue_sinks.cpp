// The queries that call a sink. Like the other queries they have no frame and leave the last error alone; unlike them
// they hold the catalogue's lock while foreign code runs.
#include "OrvActions/OrvSinks.h"

#include <string>

#include "catalogue/queries.h"
#include "platform/foreign_call.h"
#include "ulmo/debug_out.h"
#include "ulmo/number_text.h"

using namespace OrvPLC;

namespace {

using Guard = Ulmo::CriticalSectionGuard;

// Calls the sink's operation with a record for each entry; what a sink throws stops here.
template <class Record, class Sink, class ForEachEntry>
OrvBool Enumerate(Sink* sink, void (ORV_CALL Sink::*operation)(const Record*), ForEachEntry&& forEachEntry) noexcept
try {
    if (!sink) return false;
    // The lock is recursive, so a sink may ask the catalogue itself.
    const Guard guard(Catalogue().Lock());
    return forEachEntry([&](const auto& entry) {
        Record record{};
        Queries::Fill(record, entry);
        Platform::CallForeign([&] { (sink->*operation)(&record); });
    });
} catch (...) {
    return false;
}

template <class Range>
auto OfMap(const Range& range)
{
    return [&range](auto&& visit) {
        for (const auto& item : range) visit(*item.second);
        return true;
    };
}

// A caller compares the size of its own record with this line.
void TellRecordSize() noexcept
try {
    std::u16string line = u"TTalvecActionClassPlainInfo ";
    Ulmo::AppendUnsigned(line, sizeof(TTalvecActionClassPlainInfo));
    Ulmo::DebugOut("XXX").Write(Ulmo::DebugLevelInfo, line);
} catch (...) {
}

}  // namespace

OrvBool Talvec_Action_EnumerateActionClassesInterface(ITalvecActionClassSink* sink)
{
    TellRecordSize();
    return Enumerate(sink, &ITalvecActionClassSink::OnActionClass, OfMap(Catalogue().ClassesByName()));
}

OrvBool Talvec_Action_EnumerateActionsInterface(ITalvecActionSink* sink)
{
    return Enumerate(sink, &ITalvecActionSink::OnAction, OfMap(Catalogue().ActionsByName()));
}

OrvBool Talvec_Action_EnumerateActionParametersInterface(ITalvecParameterSink* sink, std::uint32_t code)
{
    return Enumerate(sink, &ITalvecParameterSink::OnParameter, [code](auto&& visit) {
        if (code != ORV_GENERAL_PARAMETERS && !Catalogue().FindActionByCode(code)) return false;
        const Queries::ParameterList parameters = Queries::ParametersOfActionOrGeneral(code);
        for (std::uint32_t index = 0; index < parameters.size(); ++index) visit(*parameters.Find(index));
        return true;
    });
}

OrvBool Talvec_Action_EnumerateEnumValuesInterface(ITalvecEnumValueSink* sink, std::uint32_t kind, std::uint32_t id)
{
    return Enumerate(sink, &ITalvecEnumValueSink::OnEnumValue, [kind, id](auto&& visit) {
        for (const auto& item : Queries::EnumValues(Queries::EnumFilter::FromKind(kind, id))) visit(*item.second);
        return true;
    });
}
