// The frame around an exported call: no exception leaves it, and what went wrong is kept for the caller. Look-ups and
// queries of the catalogue, versions and the last error itself have none.
//
// An export is its arguments, one call into the floors below and one of these frames. Checks of arguments belong
// inside.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "exports/last_error.h"
#include "objects/action.h"
#include "platform/calling_function.h"

namespace OrvPLC {

// Stores the exception that is being handled. To be called from a catch clause only.
void StoreCurrentException() noexcept;

// Runs the work. Its answer is the answer of the call; what it throws is stored, and the answer is `failure`. The other
// frames of this file are built on this one.
template <class Result, class Work>
Result Guarded(Result failure, Work&& work) noexcept
{
    try {
        return work();
    } catch (...) {
        StoreCurrentException();
        return failure;
    }
}

// The result of the work, with the last error cleared, or `failure` with the exception stored.
template <class Result, class Work>
Result Framed(Result failure, Work&& work) noexcept
{
    return Guarded<Result>(failure, [&] {
        Result result = work();
        LastError::Clear();
        return result;
    });
}

// True unless the work throws.
template <class Work>
OrvBool Succeeds(Work&& work) noexcept
{
    return Framed<OrvBool>(0, [&] {
        work();
        return OrvBool{1};
    });
}

// The handle of the object that `make` gives; null when it gives none.
template <class Make>
TOrvHandle NewHandle(Make&& make) noexcept
{
    return Framed<TOrvHandle>(nullptr, [&] { return HandleOf(make()); });
}

// The object of a handle. A null handle is the caller's fault; builds with assertions say in which function.
[[noreturn]] void NullHandle(const char* function);
inline TOrvMessage& ObjectOf(TOrvHandle handle, const char* function)
{
#if !defined(NDEBUG)
    if (!handle) NullHandle(function);
#else
    static_cast<void>(function);
#endif
    return *MessageOf(handle);
}

// The work gets the object of the handle. It answers with a truth value, or with nothing, which is success.
template <class Work>
OrvBool OnObject(TOrvHandle handle, Work&& work, const char* function = ORV_CALLING_FUNCTION) noexcept
{
    return Framed<OrvBool>(0, [&]() -> OrvBool {
        TOrvMessage& object = ObjectOf(handle, function);
        if constexpr (std::is_void_v<std::invoke_result_t<Work&, TOrvMessage&>>) {
            work(object);
            return 1;
        } else {
            return work(object);
        }
    });
}

// The same for the action that every object is.
template <class Work>
OrvBool OnAction(TOrvHandle handle, Work&& work, const char* function = ORV_CALLING_FUNCTION) noexcept
{
    return OnObject(
        handle, [&](TOrvMessage& object) { return work(static_cast<TOrvAction&>(object)); }, function);
}

// The buffer protocol. `write` tells whether the buffer held everything; when it did not, that is the stored failure.
template <class Write>
OrvBool IntoBuffer(Write&& write) noexcept
{
    return Guarded<OrvBool>(0, [&] {
        const bool held = write();
        if (held) {
            LastError::Clear();
        } else {
            LastError::StoreBufferTooSmall();
        }
        return OrvBool{held};
    });
}

// For texts, of which none or all is written. `make` returns the text as a string or a view of Char.
template <class Char, class Make>
OrvBool StoreText(Char* buffer, std::uint32_t size, std::uint32_t* required, Make&& make) noexcept
{
    return IntoBuffer([&] {
        const auto text = make();
        static_assert(sizeof(text[0]) == sizeof(Char));
        const auto needed = static_cast<std::uint32_t>(text.size() + 1);
        if (required) *required = needed;
        if (!buffer || size < needed) return false;
        std::memcpy(static_cast<void*>(buffer), text.data(), text.size() * sizeof(Char));
        buffer[text.size()] = Char{};
        return true;
    });
}

// The text that `make` gives of the object.
template <class Char, class Make>
OrvBool StoreTextOf(TOrvHandle handle, Char* buffer, std::uint32_t size, std::uint32_t* required, Make&& make,
                    const char* function = ORV_CALLING_FUNCTION) noexcept
{
    return StoreText(buffer, size, required, [&] { return make(ObjectOf(handle, function)); });
}

}  // namespace OrvPLC
