// The objects that carry one action.
//
// The base class implements the whole operation table, so that one pointer reaches every operation whatever the
// concrete class; that pointer is the handle. A class refuses in QueryInterface what it does not mean to be.
//
// The writers and records of the floors above are declared here by name only: each member is defined in the file that
// holds its knowledge (the technical text writer's file defines WriteTechnicalText, and so on).
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "OrvActions/OrvInterfaces.h"
#include "catalogue/boundary.h"
#include "catalogue/catalogue.h"
#include "objects/parameter_map.h"
#include "objects/shared_name.h"
#include "platform/living_count.h"

namespace OrvPLC {

class TOrvTechnicalTextWriter;
class TOrvPlainTextWriter;
class TOrvJsonWriter;
class TOrvBinaryCursor;

// The interfaces of the base class with what is common to all objects.
class TOrvMessage : public ITalvecMatchAction, public ITalvecJson {
public:
    TOrvMessage(const TOrvMessage&) = delete;
    TOrvMessage& operator=(const TOrvMessage&) = delete;

    // IUnknown. QueryInterface gives 0 and a new reference, or a COM error code and null.
    std::int32_t ORV_CALL QueryInterface(const TOrvGuid& id, void** object) override;
    std::uint32_t ORV_CALL AddRef() override;   // the new count
    std::uint32_t ORV_CALL Release() override;  // the new count; at 0 the object is gone

    // ITalvecMessage. The texts are new system strings that the caller owns, null if a value has no text. The block is
    // task memory that the caller owns, null with size 0 if it cannot be made.
    std::uint32_t ORV_CALL GetMessageKind() override { return kind_; }
    void ORV_CALL StoreToTextTechnical(OrvBStr* text) override;
    void ORV_CALL StoreToTextPlain(OrvBStr* text) override;
    void ORV_CALL StoreToBinary(void** block, std::uint32_t* size) override;

    // ITalvecJson. As the texts. `wrap` puts braces around the whole; the limit stands for the process-wide priority
    // level.
    void ORV_CALL StoreJson(OrvBStr* text, OrvBool wrap) override;
    void ORV_CALL StoreJsonLimited(OrvBStr* text, OrvBool wrap, std::uint32_t limit) override;

    // Not reachable by a foreign caller.
    virtual ~TOrvMessage();
    virtual TOrvMessage* Clone() const = 0;              // a new object of the same class with count 1
    virtual std::uint32_t GetInternalIndex() const = 0;  // of the catalogue's entry; 0 without one
    // Each appends its form to what the writer holds, and raises what that form raises. A limit of null means the
    // process-wide priority level.
    virtual void WriteJson(TOrvJsonWriter& writer, const std::uint32_t* limit) const = 0;
    virtual void WritePlainText(TOrvPlainTextWriter& writer) const = 0;
    virtual void WriteTechnicalText(TOrvTechnicalTextWriter& writer) const = 0;
    virtual void WriteBinary(TOrvBinaryCursor& cursor) const = 0;
    // Same name in any case and same content. The caller has checked that both are of the same kind.
    virtual bool Equals(const TOrvMessage& other) const = 0;

    std::uint32_t Kind() const noexcept { return kind_; }  // ORV_MESSAGE_ACTION or ORV_MESSAGE_MATCH_ACTION
    std::u16string_view Name() const noexcept { return name_.view(); }  // as given at creation
    std::uint32_t ReferenceCount() const noexcept { return count_.load(std::memory_order_relaxed); }
    // For the functions that hand an object out with count 0, for a smart pointer to take the first reference.
    void SetReferenceCount(std::uint32_t count) noexcept { count_.store(count, std::memory_order_relaxed); }

    // Opaque values of the caller; in no form of an action and 0 in every new object, a clone included.
    std::uint64_t internalData = 0;
    std::uint32_t messageFlags = 0;

    const char* NarrowName();  // the own name in the ANSI code page, made on first use

protected:
    const SharedName& OwnName() const noexcept { return name_; }
    TOrvMessage(std::uint32_t kind, SharedName name, std::uint32_t count)
        : count_(count), name_(std::move(name)), kind_(static_cast<std::uint8_t>(kind))
    {
        Platform::LivingCount::ObjectMade();
    }
    // Whether QueryInterface knows the id, beside IUnknown, ITalvecMessage and ITalvecJson, which every object has.
    virtual bool Supports(const TOrvGuid& id) const = 0;
    virtual bool OffersMarshaler() const = 0;  // to a COM host that asks for one

private:
    // Asks the marshaler, which is made on the first demand: a COM host sees no difference and every other is spared
    // the cost.
    std::int32_t QueryMarshaler(const TOrvGuid& id, void** object);

    std::atomic<std::uint32_t> count_;
    [[no_unique_address]] SharedName name_;  // the next member lies in its padding
    std::uint8_t kind_;
    std::unique_ptr<std::string> narrowName_;
    std::atomic<void*> marshaler_{nullptr};
};

// Holds an object under construction: it ends with the guard unless kept.
struct ObjectRelease {
    void operator()(TOrvMessage* object) const { delete object; }
};
template <class T>
using ObjectPtr = std::unique_ptr<T, ObjectRelease>;

// From a handle or an interface pointer of this library to its object, and back. No reference changes hands.
inline TOrvMessage* MessageOf(TOrvHandle handle)
{
    return static_cast<TOrvMessage*>(reinterpret_cast<ITalvecMatchAction*>(handle));
}
inline TOrvHandle HandleOf(TOrvMessage* object)
{
    return reinterpret_cast<TOrvHandle>(static_cast<ITalvecMatchAction*>(object));
}

}  // namespace OrvPLC
