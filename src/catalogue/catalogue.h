// The catalogue: the one place that knows what exists. One process-wide object, filled while the library loads and
// only read afterwards, apart from the display texts.
//
// Threads: as no entry is added or removed after loading, lookups take no lock. Enumerations and text writes hold the
// lock, so that a caller sees no half-written text while it walks.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/entries.h"
#include "catalogue/name_index.h"
#include "ulmo/critical_section.h"

namespace OrvPLC {

using ActionClassPtr = Ulmo::CountedPtr<TOrvActionClassInternalInfo>;
using ActionPtr = Ulmo::CountedPtr<TOrvActionInternalInfo>;
using ParameterPtr = Ulmo::CountedPtr<TOrvParameterInternalInfo>;
using EnumValuePtr = Ulmo::CountedPtr<TOrvEnumInternalInfo>;

class TOrvActionCatalogue : public Ulmo::NonCopyable {
public:
    // Registration. A null entry is ignored. A name that is there already keeps its entry and the newcomer is dropped
    // whole; a new name with an old code takes the code, and the older entry stays reachable by name and by index.
    void RegisterActionClass(const ActionClassPtr& entry);
    void RegisterAction(const ActionPtr& entry);  // sets InternalIndex, the number of actions registered before
    void RegisterEventInfo(const ActionPtr& entry);
    void RegisterGeneralParameter(const ParameterPtr& entry);
    void RegisterEnumValue(const EnumValuePtr& entry);
    void RegisterEnumType(std::u16string_view lowerName, std::uint32_t id);

    // Lookups: null when there is none. Names in any case.
    const TOrvActionClassInternalInfo* FindActionClassByCode(std::uint32_t code) const;
    const TOrvActionClassInternalInfo* FindActionClassByName(std::u16string_view name) const;
    const TOrvActionInternalInfo* FindActionByCode(std::uint32_t code) const;
    const TOrvActionInternalInfo* FindActionByName(std::u16string_view name) const;
    const TOrvActionInternalInfo* FindActionByIndex(std::uint32_t index) const;
    const TOrvParameterInternalInfo* FindGeneralParameter(std::u16string_view name) const;
    const TOrvEnumInternalInfo* FindEnumValue(std::uint32_t enumId, std::uint32_t value) const;
    std::uint32_t FindEnumTypeId(std::u16string_view name) const;  // with bit 0x1000 set, 0 when unknown
    const TOrvActionInternalInfo* EventInfo() const { return eventInfo_.get(); }

    // For enumerations and text writes, under Lock().
    using ClassMap = std::map<std::u16string_view, ActionClassPtr>;
    using ActionMap = std::map<std::u16string_view, ActionPtr>;
    using EnumValueMap = std::map<std::uint64_t, EnumValuePtr>;
    const ClassMap& ClassesByName() const { return classesByName_; }
    const ActionMap& ActionsByName() const { return actionsByName_; }
    const EnumValueMap& EnumValues() const { return enumValues_; }
    const std::vector<ParameterPtr>& GeneralParameters() const { return generalParameters_; }  // as registered
    Ulmo::CriticalSection& Lock() const { return lock_; }

    static std::uint64_t EnumKey(std::uint32_t enumId, std::uint32_t value)
    {
        return (std::uint64_t{enumId} << 32) | value;
    }

private:
    ClassMap classesByName_;  // keyed by LowerName, unit by unit: the order of every enumeration
    ActionMap actionsByName_;
    NameIndex classIndex_;
    NameIndex actionIndex_;
    std::unordered_map<std::uint32_t, ActionClassPtr> classesByCode_;
    std::unordered_map<std::uint32_t, ActionPtr> actionsByCode_;
    std::vector<ActionPtr> actionsByIndex_;
    ActionPtr eventInfo_;
    std::vector<ParameterPtr> generalParameters_;
    NameIndex generalParameterIndex_;
    EnumValueMap enumValues_;
    std::map<std::u16string, std::uint32_t, std::less<>> enumTypes_;
    mutable Ulmo::CriticalSection lock_;
};

// The process-wide catalogue, complete with the built-in content from the start of the library to its end.
TOrvActionCatalogue& Catalogue();
void StartCatalogue();
void EndCatalogue();

// Fills a catalogue with the built-in table.
void BuildCatalogue(TOrvActionCatalogue& catalogue);

}  // namespace OrvPLC
