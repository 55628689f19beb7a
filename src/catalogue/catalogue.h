// The catalogue: the one place that knows what exists. One process-wide object, complete once the library has loaded
// and only read afterwards, apart from the display texts.
//
// The built-in content is not registered: it stands ready in constant tables. Registration adds to it, and the first
// registration costs the first allocation.
//
// Threads: as no entry is added or removed after loading, lookups take no lock. Enumerations and text writes hold the
// lock, so that a caller sees no half-written text while it walks.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/builtin_tables.h"
#include "catalogue/entries.h"
#include "catalogue/entry_list.h"
#include "catalogue/ordered_entries.h"
#include "ulmo/critical_section.h"

namespace OrvPLC {

using ActionClassPtr = Ulmo::CountedPtr<TOrvActionClassInternalInfo>;
using ActionPtr = Ulmo::CountedPtr<TOrvActionInternalInfo>;
using EnumValuePtr = Ulmo::CountedPtr<TOrvEnumInternalInfo>;

// The codes of actions. Below the first are the sibling product's, and 0 for event records; extensions have the codes
// from their own first on.
inline constexpr std::uint32_t kFirstActionCode = 1001;
inline constexpr std::uint32_t kFirstExtensionActionCode = 10000;

// The values of an enum stand side by side.
inline std::uint64_t EnumKey(std::uint32_t enumId, std::uint32_t value)
{
    return (std::uint64_t{enumId} << 32) | value;
}
inline std::uint64_t EnumKeyOf(const TOrvEnumInternalInfo& entry)
{
    return EnumKey(entry.EnumId, entry.Value);
}

class TOrvActionCatalogue : public Ulmo::NonCopyable {
public:
    enum class Content { None, BuiltIn };

    explicit TOrvActionCatalogue(Content content = Content::None);

    // Registration. A null entry is ignored. A name that is there already keeps its entry and the newcomer is dropped
    // whole; a new name with an old code takes the code, and the older entry stays reachable by name and by index.
    // Where memory runs out nothing is registered.
    void RegisterActionClass(const ActionClassPtr& entry);
    void RegisterAction(const ActionPtr& entry);  // sets InternalIndex, the number of actions registered before
    void RegisterEnumValue(const EnumValuePtr& entry);
    void RegisterEnumType(std::u16string_view lowerName, std::uint32_t id);

    // Lookups: null if there is none. Names in any case.
    const TOrvActionClassInternalInfo* FindActionClassByCode(std::uint32_t code) const
    {
        return classes_.FindByCode(code);
    }
    const TOrvActionClassInternalInfo* FindActionClassByName(std::u16string_view name) const
    {
        return classes_.FindByName(name);
    }
    const TOrvActionInternalInfo* FindActionByCode(std::uint32_t code) const { return actions_.FindByCode(code); }
    const TOrvActionInternalInfo* FindActionByName(std::u16string_view name) const { return actions_.FindByName(name); }
    const TOrvActionInternalInfo* FindActionByIndex(std::uint32_t index) const { return actions_.FindByPlace(index); }
    const TOrvParameterInternalInfo* FindGeneralParameter(std::u16string_view name) const;
    const TOrvEnumInternalInfo* FindEnumValue(std::uint32_t enumId, std::uint32_t value) const;
    std::uint32_t FindEnumTypeId(std::u16string_view name) const;             // with kEnumIdBit, 0 when unknown
    const TOrvActionInternalInfo* EventEntry() const { return eventEntry_; }  // what all event records have in common

    // For enumerations and text writes, under Lock(). By lower-cased name, unit by unit; values by key.
    using ClassMap = EntryList<TOrvActionClassInternalInfo>::Map;
    using ActionMap = EntryList<TOrvActionInternalInfo>::Map;
    using EnumValueMap = OrderedEntries<TOrvEnumInternalInfo, &EnumKeyOf>;
    const ClassMap& ClassesByName() const { return classes_.ByName(); }
    const ActionMap& ActionsByName() const { return actions_.ByName(); }
    const EnumValueMap& EnumValues() const { return enumValues_; }
    std::span<const TOrvParameterInternalInfo> GeneralParameters() const { return generalParameters_; }
    Ulmo::CriticalSection& Lock() const { return lock_; }

private:
    EntryList<TOrvActionClassInternalInfo> classes_;
    EntryList<TOrvActionInternalInfo> actions_;
    const TOrvActionInternalInfo* eventEntry_ = nullptr;
    std::span<const TOrvParameterInternalInfo> generalParameters_;
    EnumValueMap enumValues_;
    std::span<const std::uint64_t> enumKeys_;  // of the built-in values
    std::vector<EnumValuePtr> addedValues_;
    std::span<const Builtin::EnumType> enumTypes_;
    std::map<std::u16string, std::uint32_t, std::less<>> addedTypes_;
    mutable Ulmo::CriticalSection lock_;
};

// The process-wide catalogue, with the built-in content from the start of the library to its end.
void StartCatalogue();
void EndCatalogue();

namespace Detail {

extern union CatalogueStorage catalogueStorage;

}  // namespace Detail

inline TOrvActionCatalogue& Catalogue()
{
    return reinterpret_cast<TOrvActionCatalogue&>(Detail::catalogueStorage);
}

}  // namespace OrvPLC
