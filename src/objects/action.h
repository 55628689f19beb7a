// An action with its parameters.
#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <string_view>

#include "objects/message.h"
#include "objects/operation.h"

namespace OrvPLC {

class TOrvAction : public TOrvMessage {
public:
    // A new action with one reference. The catalogue entry is found by the name in any case; a name that it does not
    // know gives an object without entry.
    static TOrvAction* Create(std::u16string_view name, std::uint32_t count = 1);
    static TOrvAction* Create(const TOrvActionInternalInfo& entry, std::uint32_t count = 1);
    // With room in its block for texts of that many bytes, as TextRoom counts them.
    static TOrvAction* CreateWithRoom(std::u16string_view name, std::size_t textBytes);
    static TOrvAction* CreateWithRoom(const TOrvActionInternalInfo& entry, std::size_t textBytes);

    // An object and its slots are one block of raw memory, so it is freed as raw memory.
    static void operator delete(void* block) { ::operator delete(block); }

    // ITalvecAction
    std::uint32_t ORV_CALL GetActionClassCode() override;
    const OrvWChar* ORV_CALL GetActionClassName() override;
    std::uint32_t ORV_CALL GetActionCode() override;
    const OrvWChar* ORV_CALL GetActionName() override;
    const OrvWChar* ORV_CALL GetActionPlainName() override;
    const OrvWChar* ORV_CALL GetActionDescription() override;
    std::uint32_t ORV_CALL GetActionPriority() override;
    std::uint32_t ORV_CALL GetActionFlags() override;
    ITalvecMatchAction* ORV_CALL CreateMatchAction() override;
    std::uint32_t ORV_CALL GetParameterCount() override;
    void ORV_CALL EnumerateParameters(ITalvecParameterEnumerator* enumerator) override;
    bool ORV_CALL HasParameter(const OrvWChar* name) override;
    void ORV_CALL RemoveParameter(const OrvWChar* name) override;
    std::uint32_t ORV_CALL GetParameterType(const OrvWChar* name) override;
    std::uint32_t ORV_CALL GetParameterEnum(const OrvWChar* name) override;
    bool ORV_CALL GetBoolean(const OrvWChar* name, OrvBool* value) override;
    bool ORV_CALL GetInt32(const OrvWChar* name, std::int32_t* value) override;
    bool ORV_CALL GetInt64(const OrvWChar* name, std::int64_t* value) override;
    bool ORV_CALL GetDouble(const OrvWChar* name, double* value) override;
    bool ORV_CALL GetString(const OrvWChar* name, OrvBStr* value) override;
    bool ORV_CALL GetDateTime(const OrvWChar* name, TUlmoDateTime* value) override;
    bool ORV_CALL GetGuid(const OrvWChar* name, TOrvGuid* value) override;
    bool ORV_CALL GetEventType(const OrvWChar* name, TOrvEventTypeValue* value) override;
    bool ORV_CALL GetMediaChannel(const OrvWChar* name, TOrvChannelValue* value) override;
    bool ORV_CALL GetResource(const OrvWChar* name, TOrvResourceValue* value) override;
    bool ORV_CALL GetRect(const OrvWChar* name, std::int64_t* value) override;
    bool ORV_CALL GetResultDataSet(const OrvWChar* name, const TOrvResultDataItem** items,
                                   std::uint64_t* count) override;
    void ORV_CALL SetBoolean(const OrvWChar* name, OrvBool value) override;
    void ORV_CALL SetInt32(const OrvWChar* name, std::int32_t value) override;
    void ORV_CALL SetInt64(const OrvWChar* name, const std::int64_t* value) override;
    void ORV_CALL SetDouble(const OrvWChar* name, const double* value) override;
    void ORV_CALL SetString(const OrvWChar* name, const OrvWChar* value) override;
    void ORV_CALL SetDateTime(const OrvWChar* name, const TUlmoDateTime* value) override;
    void ORV_CALL SetGuid(const OrvWChar* name, const TOrvGuid* value) override;
    void ORV_CALL SetEventType(const OrvWChar* name, const TOrvEventTypeValue* value) override;
    void ORV_CALL SetMediaChannel(const OrvWChar* name, const TOrvChannelValue* value) override;
    void ORV_CALL SetResource(const OrvWChar* name, const TOrvResourceValue* value) override;
    void ORV_CALL SetRect(const OrvWChar* name, const std::int64_t* value) override;
    void ORV_CALL SetResultDataSet(const OrvWChar* name, const TOrvResultDataItem* items, std::uint64_t count) override;
    void ORV_CALL SetEnum(const OrvWChar* name, std::int32_t value, std::uint32_t enumType) override;
    bool ORV_CALL GetEventData(TOrvEventData* record) override;

    // ITalvecMatchAction: the defaults of an action that is no pattern.
    const OrvWChar* ORV_CALL GetDescription() override;
    void ORV_CALL SetDescription(const OrvWChar* text) override;
    bool ORV_CALL Matches(ITalvecAction* action) override;
    bool ORV_CALL HasDescription() override;
    ITalvecAction* ORV_CALL CreateActionFromTemplate(ITalvecAction* templateAction) override;

    TOrvMessage* Clone() const override;
    std::uint32_t GetInternalIndex() const override;
    void WriteJson(TOrvJsonWriter& writer, const std::uint32_t* limit) const override;
    void WritePlainText(TOrvPlainTextWriter& writer) const override;
    void WriteTechnicalText(TOrvTechnicalTextWriter& writer) const override;
    void WriteBinary(TOrvBinaryCursor& cursor) const override;
    bool Equals(const TOrvMessage& other) const override;

    const TOrvActionInternalInfo* Entry() const noexcept { return parameters_.Entry(); }  // may be null
    ParameterMap& Parameters() noexcept { return parameters_; }
    const ParameterMap& Parameters() const noexcept { return parameters_; }
    TOrvChannelValue& Scratch() noexcept { return scratch_; }  // what the role accessors hand out

    // The match action's description, which the text and binary forms write ahead of the parameters; null for others.
    virtual const TOrvParameter* DescriptionParameter() const { return nullptr; }
    virtual std::u16string_view DescriptionName() const { return {}; }

protected:
    // Memory for an object of a class, for its slots and for its texts: in one block unless two are faster.
    struct Block {
        void* object;
        ParameterMap::Memory memory;
    };
    static Block Allocate(std::size_t objectSize, const TOrvActionInternalInfo* entry, std::size_t textBytes)
    {
        // A text that is longer than this room can be has a block of its own.
        constexpr std::size_t kMostTextBytes = 0x40000000;
        textBytes = std::min(textBytes, kMostTextBytes);
        const std::size_t slots = ParameterMap::SlotCount(entry);
        const std::size_t size = objectSize + slots * sizeof(TOrvParameter);
        const bool apart = size + textBytes > TextRoom::kQuickBlock && size <= TextRoom::kQuickBlock &&
                           textBytes <= TextRoom::kMostInQuickChunk;
        // The slots follow the object without padding. No constructor that runs in the block can fail, so nobody guards
        // it.
        void* object = ::operator new(apart ? size : size + textBytes);
        return {object, {static_cast<char*>(object) + objectSize, slots, textBytes, apart}};
    }

    TOrvAction(std::uint32_t kind, SharedName name, std::uint32_t count, const TOrvActionInternalInfo* entry,
               const Block& block)
        : TOrvMessage(kind, std::move(name), count), parameters_(entry, block.memory)
    {}
    // The catalogue's own string where the spelling is the catalogue's.
    static SharedName NameFor(std::u16string_view name, const TOrvActionInternalInfo* entry);
    bool Supports(const TOrvGuid& id) const override;
    bool OffersMarshaler() const override { return true; }

private:
    // Inline in each of the creators, as every object is made here.
    [[gnu::always_inline]] static inline TOrvAction* Make(SharedName name, std::uint32_t count,
                                                          const TOrvActionInternalInfo* entry, std::size_t textBytes);
    // Whether the parameter is present. If it is, it is read; a read that fails does not change the answer.
    template <class Read>
    bool IfPresent(const OrvWChar* name, Read&& read)
    {
        TOrvParameter* const found = parameters_.Find(TerminatedView(name));
        if (found) InOperation([&] { read(*found); });
        return found != nullptr;
    }
    template <class Value>
    bool Get(const OrvWChar* name, Value& value, bool (TOrvParameter::*read)(Value&) const)
    {
        return IfPresent(name, [&](const TOrvParameter& found) { (found.*read)(value); });
    }
    template <class Fill>
    void Put(const OrvWChar* name, Fill&& fill)
    {
        InOperation([&] { parameters_.Store(TerminatedView(name), fill); });
    }

    ParameterMap parameters_;
    TOrvChannelValue scratch_{};
};

// Every object of this library that is behind a handle is an action of some class.
inline TOrvAction& ActionOf(TOrvHandle handle)
{
    return static_cast<TOrvAction&>(*MessageOf(handle));
}

}  // namespace OrvPLC
