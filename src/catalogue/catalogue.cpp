#include "catalogue/catalogue.h"

#include <algorithm>
#include <new>

#include "ulmo/string_conversion.h"

namespace OrvPLC {

TOrvActionCatalogue::TOrvActionCatalogue(Content content)
{
    if (content == Content::None) return;
    classes_ = {Builtin::Classes(), Builtin::ClassNames(), Builtin::ClassCodes()};
    actions_ = {Builtin::Actions(), Builtin::ActionNames(), Builtin::ActionCodes()};
    eventEntry_ = &Builtin::EventDescription();
    generalParameters_ = Builtin::GeneralParameters();
    enumValues_ = EnumValueMap(Builtin::EnumValues());
    enumKeys_ = Builtin::EnumKeys();
    enumTypes_ = Builtin::EnumTypes();
}

void TOrvActionCatalogue::RegisterActionClass(const ActionClassPtr& entry)
{
    if (!entry) return;
    const Ulmo::CriticalSectionGuard guard(lock_);
    classes_.Add(entry);
}

void TOrvActionCatalogue::RegisterAction(const ActionPtr& entry)
{
    if (!entry) return;
    const Ulmo::CriticalSectionGuard guard(lock_);
    const auto index = static_cast<std::uint32_t>(actions_.Size());
    if (actions_.Add(entry)) entry->InternalIndex = index;
}

void TOrvActionCatalogue::RegisterEnumValue(const EnumValuePtr& entry)
{
    if (!entry) return;
    const Ulmo::CriticalSectionGuard guard(lock_);
    if (FindEnumValue(entry->EnumId, entry->Value)) return;
    // After this only Add can fail, and then nothing has changed.
    ReserveOne(addedValues_);
    enumValues_.Add(*entry);
    addedValues_.push_back(entry);
}

void TOrvActionCatalogue::RegisterEnumType(std::u16string_view lowerName, std::uint32_t id)
{
    const Ulmo::CriticalSectionGuard guard(lock_);
    // The first enum of a name keeps it.
    addedTypes_.try_emplace(std::u16string(lowerName), id);
}

const TOrvParameterInternalInfo* TOrvActionCatalogue::FindGeneralParameter(std::u16string_view name) const
{
    for (const TOrvParameterInternalInfo& entry : generalParameters_) {
        if (Ulmo::EqualsLower(name, entry.LowerName.view())) return &entry;
    }
    return nullptr;
}

const TOrvEnumInternalInfo* TOrvActionCatalogue::FindEnumValue(std::uint32_t enumId, std::uint32_t value) const
{
    const std::uint64_t key = EnumKey(enumId, value);
    const auto found = std::lower_bound(enumKeys_.begin(), enumKeys_.end(), key);
    if (found == enumKeys_.end() || *found != key) return enumValues_.FindAdded(key);
    return &Builtin::EnumValues()[static_cast<std::size_t>(found - enumKeys_.begin())];
}

std::uint32_t TOrvActionCatalogue::FindEnumTypeId(std::u16string_view name) const
{
    const std::u16string lower = Ulmo::LowerCase(name);
    const auto text = [](const Builtin::EnumType& type) { return StoredText<char16_t>(type.lower).view(); };
    const auto found = std::lower_bound(enumTypes_.begin(), enumTypes_.end(), std::u16string_view(lower),
                                        [&](const auto& type, std::u16string_view key) { return text(type) < key; });
    if (found != enumTypes_.end() && text(*found) == lower) return found->id | kEnumIdBit;
    const auto added = addedTypes_.find(lower);
    return added == addedTypes_.end() ? 0 : added->second | kEnumIdBit;
}

// In place: there is nothing to allocate at start, and the way to it is short. Not destroyed with the static objects,
// since other threads may still be inside the library then.
union Detail::CatalogueStorage {
    char none;
    TOrvActionCatalogue catalogue;
    constexpr CatalogueStorage() : none(0) {}
    ~CatalogueStorage() {}
};
constinit Detail::CatalogueStorage Detail::catalogueStorage;

void StartCatalogue()
{
    new (&Detail::catalogueStorage) TOrvActionCatalogue(TOrvActionCatalogue::Content::BuiltIn);
}

void EndCatalogue()
{
    Catalogue().~TOrvActionCatalogue();
    // The built-in entries are data of the module and end with it; only the rooms of texts that were written are memory
    // of their own.
    const auto forgetTexts = [](auto& entries) {
        for (auto& entry : entries) entry.ForgetTexts();
    };
    auto classes = Builtin::Classes();
    auto actions = Builtin::Actions();
    auto parameters = Builtin::Parameters();
    auto values = Builtin::EnumValues();
    forgetTexts(classes);
    forgetTexts(actions);
    forgetTexts(parameters);
    forgetTexts(values);
    Builtin::EventDescription().ForgetTexts();
}

}  // namespace OrvPLC
