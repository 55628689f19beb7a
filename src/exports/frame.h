// The frame around every exported call: no exception leaves it, and what went wrong is kept for the caller.
//
// An export is its arguments, one call into the floors below and this frame. Checks of arguments belong inside.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "exports/last_error.h"
#include "objects/message.h"
#include "platform/calling_function.h"

namespace OrvPLC {

// Stores the exception that is being handled. To be called from a catch clause only.
void StoreCurrentException() noexcept;

// Runs the work; its result, with the last error cleared, or `failure` with the exception stored.
template <class Result, class Work>
Result Framed(Result failure, Work&& work) noexcept
{
    try {
        Result result = work();
        LastError::Clear();
        return result;
    } catch (...) {
        StoreCurrentException();
        return failure;
    }
}

// The object of a handle. A null handle is the caller's fault; builds with assertions say in which function.
[[noreturn]] void NullHandle(const char* function);
inline TOrvMessage& ObjectOf(TOrvHandle handle, const char* function = ORV_CALLING_FUNCTION)
{
#if !defined(NDEBUG)
    if (!handle) NullHandle(function);
#else
    static_cast<void>(function);
#endif
    return *MessageOf(handle);
}

// For operations on a handle: the work gets the object, and success is true.
template <class Work>
OrvBool OnObject(TOrvHandle handle, Work&& work, const char* function = ORV_CALLING_FUNCTION) noexcept
{
    return Framed<OrvBool>(0, [&] {
        work(ObjectOf(handle, function));
        return OrvBool{1};
    });
}

// The buffer protocol of all text stores. `make` returns the text as a string or a view of Char.
template <class Char, class Make>
OrvBool StoreText(Char* buffer, std::uint32_t size, std::uint32_t* required, Make&& make) noexcept
{
    try {
        const auto text = make();
        static_assert(sizeof(text[0]) == sizeof(Char));
        const auto needed = static_cast<std::uint32_t>(text.size() + 1);
        if (required) *required = needed;
        if (!buffer || size < needed) {
            LastError::StoreBufferTooSmall();
            return 0;
        }
        std::memcpy(static_cast<void*>(buffer), text.data(), text.size() * sizeof(Char));
        buffer[text.size()] = Char{};
        LastError::Clear();
        return 1;
    } catch (...) {
        StoreCurrentException();
        return 0;
    }
}

}  // namespace OrvPLC
