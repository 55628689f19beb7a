// Helpers of the interface tests, which see no more than a caller does.
#pragma once

#include <OrvActions.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#if defined(_WIN32)
// The system's own; its header would bring all of its macros.
extern "C" __declspec(dllimport) wchar_t* __stdcall SysAllocString(const wchar_t* text);
extern "C" __declspec(dllimport) void __stdcall SysFreeString(wchar_t* text);
#endif

namespace OrvTest {

// Literals are char16_t on both systems; the interface takes its own 16-bit unit.
inline const OrvWChar* W(const char16_t* text)
{
    return reinterpret_cast<const OrvWChar*>(text);
}

inline std::u16string Text(const OrvWChar* text)
{
    return text ? std::u16string(reinterpret_cast<const char16_t*>(text)) : std::u16string();
}

// Closes its handle at the end of the scope.
class Handle {
public:
    explicit Handle(TOrvHandle handle) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&&) = delete;
    ~Handle()
    {
        if (handle_) OrvAct_CloseHandle(handle_);  // a close, even of nothing, clears the last error
    }

    TOrvHandle get() const { return handle_; }
    ITalvecMatchAction* operator->() const { return OrvInterfaceOf(handle_); }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    TOrvHandle handle_;
};

inline bool Equal(const Handle& a, const Handle& b)
{
    OrvBool equal = 0;
    EXPECT_TRUE(OrvAct_Equal(a.get(), b.get(), &equal));
    return equal != 0;
}

struct Failure {
    std::uint32_t code;
    std::uint32_t subCode;
    std::string className;
    std::u16string message;
};

inline std::optional<Failure> LastError()
{
    TOrvLastErrorInfo info{};
    if (!OrvAct_GetLastError(&info)) return std::nullopt;
    return Failure{info.code, info.subCode, info.className, Text(info.messageW)};
}

inline std::u16string StoredText(TOrvHandle handle, bool plain = false)
{
    std::uint32_t required = 0;
    OrvAct_StoreToTextBufferW(handle, nullptr, 0, plain, 0, &required);
    std::u16string text(required, u'\0');
    EXPECT_TRUE(
        OrvAct_StoreToTextBufferW(handle, reinterpret_cast<OrvWChar*>(text.data()), required, plain, 0, nullptr));
    text.resize(required ? required - 1 : 0);
    return text;
}

inline Handle Read(std::u16string_view text, std::uint32_t expectedKind = ORV_EXPECT_ANY,
                   std::uint32_t* consumed = nullptr)
{
    return Handle(OrvAct_CreateFromTextBufferW(reinterpret_cast<const OrvWChar*>(text.data()),
                                               static_cast<std::uint32_t>(text.size()), expectedKind, 0, consumed));
}

}  // namespace OrvTest
