// What a query reports: where an entry is found, and how it is copied into a record of either family.
//
// Nothing here locks: the caller holds the catalogue's lock while it looks at texts. Nothing allocates but WriteTexts.
#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "OrvActions/OrvCatalogue.h"
#include "catalogue/catalogue.h"
#include "catalogue/name_tables.h"

namespace OrvPLC::Queries {

// Parameters by position: those of an action in declaration order, or the general ones in order of registration.
class ParameterList {
public:
    ParameterList() = default;
    explicit ParameterList(const TOrvActionInternalInfo* action);  // null gives an empty list
    static ParameterList General();

    std::uint32_t size() const { return static_cast<std::uint32_t>(items_.size()); }
    const TOrvParameterInternalInfo* Find(std::uint32_t index) const  // null past the end
    {
        return index < items_.size() ? &items_[index] : nullptr;
    }

private:
    std::span<const TOrvParameterInternalInfo> items_;
};

ParameterList ParametersOfAction(std::uint32_t code);           // an unknown code gives an empty list
ParameterList ParametersOfActionOrGeneral(std::uint32_t code);  // the same with code 0 for the general parameters
ParameterList EventFields();
const TOrvParameterInternalInfo* MatchActionDescription();

// Which enum values a query means: an interval of keys, as the values of an enum stand side by side.
struct EnumFilter {
    std::uint64_t first = 0;
    std::uint64_t last = std::numeric_limits<std::uint64_t>::max();

    static EnumFilter OfEnum(std::uint32_t id);
    static EnumFilter FromPublicType(std::uint32_t publicType);
    static EnumFilter FromKind(std::uint32_t kind, std::uint32_t id);
};

// The enum that a single value is asked of; unlike the filter it knows no "all".
std::uint32_t EnumIdFromKind(std::uint32_t kind, std::uint32_t id);

class EnumValues {
public:
    using Iterator = TOrvActionCatalogue::EnumValueMap::Iterator;

    explicit EnumValues(const EnumFilter& filter);
    Iterator begin() const { return begin_; }
    Iterator end() const { return end_; }
    std::uint32_t size() const;

private:
    Iterator begin_;
    Iterator end_;
};

// Copies an entry into a record: OrvAct_ records give public types, Talvec_Action_ records the internal fields. The
// enum record of the one and the action record of the other have a reserved field that is left as it was.
template <class Record>
void Fill(Record& record, const TOrvActionClassInternalInfo& entry);
template <class Record>
void Fill(Record& record, const TOrvActionInternalInfo& entry);
template <class Record>
void Fill(Record& record, const TOrvParameterInternalInfo& entry);
template <class Record>
void Fill(Record& record, const TOrvEnumInternalInfo& entry);

// Fills at most `capacity` records from a range of the catalogue's maps; returns how many.
template <class Record, class Range>
std::uint32_t FillAll(Record* records, std::uint32_t capacity, const Range& range)
{
    std::uint32_t count = 0;
    for (auto item = range.begin(); item != range.end() && count < capacity; ++item) {
        Fill(records[count++], *(*item).second);
    }
    return count;
}

template <class Record>
std::uint32_t FillAll(Record* records, std::uint32_t capacity, const ParameterList& parameters)
{
    std::uint32_t count = 0;
    while (count < capacity && count < parameters.size()) {
        Fill(records[count], *parameters.Find(count));
        ++count;
    }
    return count;
}

// The one place where entries change after loading. An empty text means "keep".
void WriteTexts(const TOrvBaseNameInfo& entry, std::u16string_view plain, std::u16string_view description);

}  // namespace OrvPLC::Queries
