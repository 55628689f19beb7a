#include "exports/last_error.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>

#include "catalogue/boundary.h"
#include "objects/orv_plc_exception.h"
#include "platform/thread_slot.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC::LastError {

std::optional<Platform::ThreadSlot> slot;

namespace {

// Blocks for threads whose first failure is that memory has run out.
constexpr std::size_t kReserveSize = 4;
TOrvLastError reserve[kReserveSize];
std::atomic<bool> reserveTaken[kReserveSize];

// Null when all are taken: then the failure is not stored.
TOrvLastError* TakeReserve()
{
    for (std::size_t i = 0; i < kReserveSize; ++i) {
        if (!reserveTaken[i].exchange(true)) return &reserve[i];
    }
    return nullptr;
}

// For a block of either origin.
void FreeBlock(void* block)
{
    auto* error = static_cast<TOrvLastError*>(block);
    if (error >= reserve && error < reserve + kReserveSize) {
        reserveTaken[error - reserve] = false;
    } else {
        std::free(error);
    }
}

// Once a thread; kept out of the way of every other call.
[[gnu::noinline]] TOrvLastError* MakeBlock() noexcept
{
    // Not by new: a failure is being stored, and nothing may raise here.
    void* memory = std::malloc(sizeof(TOrvLastError));
    auto* block = memory ? static_cast<TOrvLastError*>(memory) : TakeReserve();
    if (!block) return nullptr;
    block->present = 0;
    block->code = 0;
    block->className[0] = 0;
    block->message[0] = 0;
    block->messageW[0] = 0;
    block->details[0] = 0;
    if (slot->Set(block)) return block;
    FreeBlock(block);
    return nullptr;
}

// Null before Start and after End, and when not even the reserve has a block.
inline TOrvLastError* Block() noexcept
{
    if (!slot) return nullptr;
    void* block = slot->Get();
    return block ? static_cast<TOrvLastError*>(block) : MakeBlock();
}

// Cuts at a unit, so half a character may stand at the end.
template <class Char, std::size_t Size>
void CopyCut(Char (&field)[Size], std::basic_string_view<Char> text) noexcept
{
    const std::size_t length = std::min(text.size(), Size - 1);
    std::memcpy(field, text.data(), length * sizeof(Char));
    field[length] = 0;
}

// Deriving one form from the other takes memory; without it the other form is what there is.
void DeriveNarrow(TOrvLastError& block, std::u16string_view wide) noexcept
{
    try {
        CopyCut<char>(block.message, Ulmo::AnsiFromWide(wide));
    } catch (...) {
        block.message[0] = 0;
    }
}

void DeriveWide(TOrvLastError& block) noexcept
{
    try {
        CopyCut<char16_t>(block.messageW, Ulmo::WideFromAnsi(block.message));
    } catch (...) {
        block.messageW[0] = 0;
    }
}

}  // namespace

void Start()
{
    slot.emplace(FreeBlock);
}

void End()
{
    if (!slot) return;
    slot->ThreadEnded();  // the calling thread's own block
    slot->Free();
    slot.reset();
}

void ThreadEnded()
{
    if (slot) slot->ThreadEnded();
}

void Store(const Report& report) noexcept
{
    TOrvLastError* block = Block();
    if (!block) return;
    block->present = 1;
    block->code = report.code;
    block->subCode = report.subCode;
    CopyCut<char>(block->className, report.className ? report.className : "");
    CopyCut<char>(block->details, report.details ? report.details : "");
    // The narrow text first, since the wide one may be derived from it.
    if (report.message) {
        CopyCut<char>(block->message, report.message);
    } else {
        DeriveNarrow(*block, report.messageW ? report.messageW : u"");
    }
    if (report.messageW) {
        CopyCut<char16_t>(block->messageW, report.messageW);
    } else {
        DeriveWide(*block);
    }
}

void StoreBufferTooSmall() noexcept
{
    Store({ORV_ERROR, ORV_SUBERROR_BUFFER_TOO_SMALL, "Ulmo::GenericException", nullptr, u"buffer too small", nullptr});
}

void ClearFirst() noexcept
{
    if (TOrvLastError* block = Block()) block->present = 0;
}

bool Read(TOrvLastErrorInfo& info) noexcept
{
    // Asking makes no block: a thread without one had no failure.
    const auto* block = slot ? static_cast<const TOrvLastError*>(slot->Get()) : nullptr;
    if (!block || !block->present) return false;
    info.code = block->code;
    info.subCode = block->subCode;
    info.className = block->className;
    info.message = block->message;
    info.messageW = Boundary(block->messageW);
    info.details = block->details;
    return true;
}

}  // namespace OrvPLC::LastError
