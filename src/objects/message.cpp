#include "objects/message.h"

#include <cstring>

#include "platform/debug_output.h"
#include "platform/marshaler.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

constexpr std::int32_t kNoInterface = static_cast<std::int32_t>(0x80004002);
constexpr std::int32_t kNullPointer = static_cast<std::int32_t>(0x80004003);
constexpr TOrvGuid kMarshal = {3, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

bool Same(const TOrvGuid& a, const TOrvGuid& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// At the end of the library a leak is told to whoever listens, and nothing else: no object is reclaimed.
struct LeakReport {
    ~LeakReport()
    {
        if (Platform::LivingCount::Read() != 0) {
            Platform::WriteDebug(u"OrvActionsDLL: some actions/messages are not destroyed!\n");
        }
    }
};
const LeakReport leakReport;

}  // namespace

TOrvMessage::~TOrvMessage()
{
    // Its pointer counts the marshaler alone and not this object, so the two do not keep each other alive.
    if (void* marshaler = marshaler_.load(std::memory_order_acquire)) static_cast<OrvUnknown*>(marshaler)->Release();
    Platform::LivingCount::ObjectEnded();
}

std::int32_t TOrvMessage::QueryInterface(const TOrvGuid& id, void** object)
{
    if (!object) return kNullPointer;
    *object = nullptr;
    if (Same(id, ORV_IID_ITalvecJson)) {
        // The only interface with a pointer of its own; all others share the primary one.
        *object = static_cast<ITalvecJson*>(this);
    } else if (Same(id, ORV_IID_IUnknown) || Same(id, ORV_IID_ITalvecMessage) || Supports(id)) {
        *object = static_cast<ITalvecMatchAction*>(this);
    } else {
        // The marshaler takes the reference of the answer itself.
        return Same(id, kMarshal) && OffersMarshaler() ? QueryMarshaler(id, object) : kNoInterface;
    }
    AddRef();
    return 0;
}

std::uint32_t TOrvMessage::AddRef()
{
    return count_.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::uint32_t TOrvMessage::Release()
{
    // A holder of the only reference needs no locked instruction: nobody else can take or give up one meanwhile.
    if (count_.load(std::memory_order_acquire) == 1) {
        count_.store(0, std::memory_order_relaxed);
        delete this;
        return 0;
    }
    const std::uint32_t left = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) delete this;
    return left;
}

std::int32_t TOrvMessage::QueryMarshaler(const TOrvGuid& id, void** object)
{
    void* marshaler = marshaler_.load(std::memory_order_acquire);
    if (!marshaler) {
        void* made = Platform::CreateFreeThreadedMarshaler(static_cast<ITalvecMatchAction*>(this));
        if (!made) return kNoInterface;
        // Two threads may make one at the same time; the first to store its own wins.
        if (marshaler_.compare_exchange_strong(marshaler, made, std::memory_order_acq_rel)) {
            marshaler = made;
        } else {
            static_cast<OrvUnknown*>(made)->Release();
        }
    }
    return static_cast<OrvUnknown*>(marshaler)->QueryInterface(id, object);
}

const char* TOrvMessage::NarrowName()
{
    // A name never changes, so its narrow form is made once. Without a lock: an object is for one thread at a time.
    if (!narrowName_) narrowName_ = std::make_unique<std::string>(Ulmo::AnsiFromWide(Name()));
    return narrowName_->c_str();
}

}  // namespace OrvPLC
