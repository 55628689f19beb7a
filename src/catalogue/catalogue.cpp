#include "catalogue/catalogue.h"

#include <memory>
#include <utility>

#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

template <class Map, class Key>
auto FindIn(const Map& map, const Key& key) -> decltype(map.find(key)->second.get())
{
    const auto found = map.find(key);
    return found == map.end() ? nullptr : found->second.get();
}

}  // namespace

void TOrvActionCatalogue::RegisterActionClass(const ActionClassPtr& entry)
{
    if (!entry) return;
    const Ulmo::CriticalSectionGuard guard(lock_);
    if (!classesByName_.try_emplace(entry->LowerName.view(), entry).second) return;
    classIndex_.Add(entry->LowerName.view(), entry.get());
    classesByCode_.insert_or_assign(entry->Code, entry);
}

void TOrvActionCatalogue::RegisterAction(const ActionPtr& entry)
{
    if (!entry) return;
    const Ulmo::CriticalSectionGuard guard(lock_);
    if (!actionsByName_.try_emplace(entry->LowerName.view(), entry).second) return;
    entry->InternalIndex = static_cast<std::uint32_t>(actionsByIndex_.size());
    actionIndex_.Add(entry->LowerName.view(), entry.get());
    actionsByCode_.insert_or_assign(entry->Code, entry);
    actionsByIndex_.push_back(entry);
}

void TOrvActionCatalogue::RegisterEventInfo(const ActionPtr& entry)
{
    const Ulmo::CriticalSectionGuard guard(lock_);
    if (!eventInfo_) eventInfo_ = entry;
}

void TOrvActionCatalogue::RegisterGeneralParameter(const ParameterPtr& entry)
{
    if (!entry) return;
    const Ulmo::CriticalSectionGuard guard(lock_);
    if (generalParameterIndex_.FindLower(entry->LowerName.view())) return;
    generalParameterIndex_.Add(entry->LowerName.view(), entry.get());
    generalParameters_.push_back(entry);
}

void TOrvActionCatalogue::RegisterEnumValue(const EnumValuePtr& entry)
{
    if (!entry) return;
    const Ulmo::CriticalSectionGuard guard(lock_);
    enumValues_.try_emplace(EnumKey(entry->EnumId, entry->Value), entry);
}

void TOrvActionCatalogue::RegisterEnumType(std::u16string_view lowerName, std::uint32_t id)
{
    const Ulmo::CriticalSectionGuard guard(lock_);
    enumTypes_.try_emplace(std::u16string(lowerName), id);
}

const TOrvActionClassInternalInfo* TOrvActionCatalogue::FindActionClassByCode(std::uint32_t code) const
{
    return FindIn(classesByCode_, code);
}

const TOrvActionClassInternalInfo* TOrvActionCatalogue::FindActionClassByName(std::u16string_view name) const
{
    return static_cast<const TOrvActionClassInternalInfo*>(classIndex_.Find(name));
}

const TOrvActionInternalInfo* TOrvActionCatalogue::FindActionByCode(std::uint32_t code) const
{
    return FindIn(actionsByCode_, code);
}

const TOrvActionInternalInfo* TOrvActionCatalogue::FindActionByName(std::u16string_view name) const
{
    return static_cast<const TOrvActionInternalInfo*>(actionIndex_.Find(name));
}

const TOrvActionInternalInfo* TOrvActionCatalogue::FindActionByIndex(std::uint32_t index) const
{
    return index < actionsByIndex_.size() ? actionsByIndex_[index].get() : nullptr;
}

const TOrvParameterInternalInfo* TOrvActionCatalogue::FindGeneralParameter(std::u16string_view name) const
{
    return static_cast<const TOrvParameterInternalInfo*>(generalParameterIndex_.Find(name));
}

const TOrvEnumInternalInfo* TOrvActionCatalogue::FindEnumValue(std::uint32_t enumId, std::uint32_t value) const
{
    return FindIn(enumValues_, EnumKey(enumId, value));
}

std::uint32_t TOrvActionCatalogue::FindEnumTypeId(std::u16string_view name) const
{
    const auto found = enumTypes_.find(Ulmo::LowerCase(name));
    return found == enumTypes_.end() ? 0 : found->second | 0x1000;
}

namespace {

TOrvActionCatalogue* catalogue = nullptr;

}  // namespace

TOrvActionCatalogue& Catalogue()
{
    return *catalogue;
}

void StartCatalogue()
{
    auto built = std::make_unique<TOrvActionCatalogue>();
    BuildCatalogue(*built);
    catalogue = built.release();
}

void EndCatalogue()
{
    delete std::exchange(catalogue, nullptr);
}

}  // namespace OrvPLC
