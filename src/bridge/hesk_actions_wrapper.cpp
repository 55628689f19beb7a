#include "bridge/hesk_actions_wrapper.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <new>
#include <type_traits>
#include <utility>

#include "bridge/hesk_functions.h"
#include "bridge/hesk_text.h"
#include "platform/debug_output.h"
#include "platform/foreign_call.h"
#include "ulmo/string_conversion.h"

namespace HeskPLC {

namespace {

constexpr std::u16string_view kLibrary = u"HeskActions";
constexpr std::uint32_t kMostAttempts = 10;
constexpr std::uint32_t kUsualText = 2047;          // characters that fit into the first call
constexpr std::uint32_t kLongestText = 0x100'0000;  // a text that claims to be longer is not an action

constexpr std::u16string_view kTextFault = u"#### HeskActionsWrapper >>>> Exception _HeskAct_StoreToTextBuffer >>>> ";
// Two operations share these words. Deliberate: readers of the debug output know them.
constexpr std::u16string_view kBufferFault = u"#### HeskActionsWrapper >>>> Error FHeskAct_CreateFromBinBuffer >>>> ";
constexpr std::u16string_view kEventFault =
    u"#### HeskActionsWrapper >>>> Error FStoreHeskEventDataRecordToTextBuffer >>>> ";

// The state of loading outlives the wrapper, as the library itself does.
std::atomic<bool> ready{false};
std::uint32_t failedAttempts = 0;
HeskFunctions functions;

// False for a function that the library lacks; the pointer is null then.
template <class Function>
bool Resolve(const Ulmo::SecureModuleHandle& library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(library.Find(name));
    return function != nullptr;
}

// All or nothing: a library of another version is not used in part.
bool ResolveAll(const Ulmo::SecureModuleHandle& library)
{
    return Resolve(library, "HeskAct_CreateFromBinBuffer", functions.createFromBinBuffer) &&
           Resolve(library, "HeskAct_StoreToTextBufferW", functions.storeToTextBuffer) &&
           Resolve(library, "HeskAct_CreateFromTextBufferW", functions.createFromTextBuffer) &&
           Resolve(library, "HeskAct_CloseHandle", functions.closeHandle) &&
           Resolve(library, "HeskAct_RestoreActionFromEventData", functions.restoreFromEventData);
}

// Calls one of the library's functions; what it raises goes on to the caller.
template <class Result, class... Parameters, class... Arguments>
Result Call(Result (*function)(Parameters...), Arguments... arguments)
{
    return Platform::CallForeign([=] { return function(arguments...); });
}

// The length is the text's, or with too little room the one that is needed.
bool StoreText(HeskHandle action, char16_t* buffer, std::uint32_t capacity, std::uint32_t& length)
{
    return Call(functions.storeToTextBuffer, action, buffer, capacity, 0U, 0U, &length) != 0;
}

void FetchLongText(HeskHandle action, std::u16string& output)
{
    std::uint32_t length = 0;
    StoreText(action, nullptr, 0, length);
    if (length == 0 || length > kLongestText) return;
    std::u16string text(length, u'\0');
    std::uint32_t stored = length;
    // The third call passes a capacity of 0 together with the buffer: the library fills it by the length. Deliberate.
    StoreText(action, text.data(), 0, stored);
    if (stored == 0) return;
    text.resize(std::min(stored, length));
    output = std::move(text);
}

// The text of an action. A failure leaves the output empty. Here and below std::bad_alloc goes on to the caller: it is
// not a failure of the sibling.
void FetchText(HeskHandle action, std::u16string& output)
{
    output.clear();
    if (!action) return;
    try {
        char16_t buffer[kUsualText + 1] = {};
        std::uint32_t length = 0;
        if (StoreText(action, buffer, kUsualText, length)) {
            output.assign(buffer, std::min(length, kUsualText));
        } else {
            FetchLongText(action, output);
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        Platform::WriteDebug(kTextFault);
    }
}

// Takes the action, which may be null, and gives its text in our own form. False if there is none.
bool TakeText(HeskHandle action, std::u16string& output)
{
    if (!action) return false;
    try {
        FetchText(action, output);
    } catch (...) {
        Call(functions.closeHandle, action);
        throw;
    }
    Call(functions.closeHandle, action);
    ConvertHeskTextToOrvText(output);
    return !output.empty();
}

// The frame of the conversions: whatever fails inside, but for memory, is told to the debug sink and answers false.
template <class Work>
bool Guarded(std::u16string_view fault, Work&& work)
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        Platform::WriteDebug(fault);
        return false;
    }
}

// Neither has a destructor: the library decides when it ends.
constinit Ulmo::CriticalSection guard;
static_assert(std::is_trivially_destructible_v<Ulmo::CriticalSection>);
HeskActionsWrapper* wrapper = nullptr;

}  // namespace

HeskActionsWrapper::~HeskActionsWrapper()
{
    Unload();
}

bool HeskActionsWrapper::Load()
{
    const std::u16string fileName = Platform::ModuleFileName(kLibrary);
    // Before the lock: an installation without the sibling pays for one query and no more.
    if (!ready && !Platform::StandsBesideExecutable(fileName)) return false;
    // The flag is true while the functions are still being looked for, so whether it holds is seen inside only.
    const Ulmo::CriticalSectionGuard inside(section_);
    if (ready) return true;
    if (failedAttempts >= kMostAttempts) return false;
    if (!Open(fileName)) {
        ++failedAttempts;
        return false;
    }
    ready = true;
    if (!ResolveAll(*this)) ready = false;  // does not count as a failed attempt: the next call looks again
    return ready;
}

bool HeskActionsWrapper::ConvertTextBuffer(std::u16string_view text, std::uint32_t version, bool flag,
                                           std::u16string& output)
{
    return Guarded(kBufferFault, [&] {
        if (!Load() || text.empty()) return false;
        // The library only says whether the text is valid: it is converted as it was given. The copy is made before
        // there is something to close.
        std::u16string valid(text);
        const HeskHandle action = Call(functions.createFromTextBuffer, text.data(),
                                       static_cast<std::uint32_t>(text.size()), version, 0U, flag);
        output.clear();
        if (!action) return false;
        output.swap(valid);
        Call(functions.closeHandle, action);
        ConvertHeskTextToOrvText(output);
        return true;
    });
}

bool HeskActionsWrapper::ConvertTextBufferA(std::string_view utf8, std::uint32_t version, bool flag,
                                            std::u16string& output)
{
    return Guarded(kBufferFault,
                   [&] { return Load() && ConvertTextBuffer(Ulmo::WideFromUtf8(utf8), version, flag, output); });
}

bool HeskActionsWrapper::ConvertBinBuffer(std::span<const std::byte> buffer, std::uint32_t version, bool flag,
                                          std::u16string& output)
{
    static_cast<void>(flag);
    return Guarded(kBufferFault, [&] {
        if (!Load() || buffer.empty()) return false;
        const auto size = static_cast<std::uint32_t>(buffer.size());
        return TakeText(Call(functions.createFromBinBuffer, buffer.data(), size, version, 0U), output);
    });
}

bool HeskActionsWrapper::ConvertEventData(const TOrvEventData& record, std::u16string& output)
{
    return Guarded(kEventFault, [&] {
        const auto size = static_cast<std::uint32_t>(record.imageSize);  // the rest of the word is not ours to trust
        if (!Load() || !record.image || size == 0) return false;
        HeskEventData image{};
        image.size = sizeof image;
        image.code = record.code;
        image.imageSize = size;
        image.image = record.image;
        return TakeText(Call(functions.restoreFromEventData, &image), output);
    });
}

void HeskActionsWrapper::Unload()
{
    // Not under the lock: whoever unloads makes sure that nobody converts meanwhile.
    GiveBack();
    ready = false;
    failedAttempts = 0;
}

HeskActionsWrapper& GetHeskActionsWrapper()
{
    const Ulmo::CriticalSectionGuard inside(guard);
    if (!wrapper) {
        wrapper = new HeskActionsWrapper;
        wrapper->AddRef();
    }
    return *wrapper;
}

void EndHeskActionsWrapper()
{
    // Without the guard: at the end of the library no other thread is inside.
    if (wrapper) std::exchange(wrapper, nullptr)->Release();
}

}  // namespace HeskPLC
