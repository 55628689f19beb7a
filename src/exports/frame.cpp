#include "exports/frame.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <type_traits>

#include "ulmo/exceptions.h"

namespace OrvPLC {

namespace {

constexpr const char* kGenericException = "Ulmo::GenericException";
constexpr const char* kUnknownException = "Ulmo::UnknownException";
constexpr std::uint32_t kUnknownCode = 0xFFFFFFFF;

// The stored record calls the exception's error class its sub-code.
void StoreUlmoException(const Ulmo::UlmoException& failure) noexcept
{
    LastError::Report report{failure.ErrorCode(), failure.ErrorClass(),          "",
                             failure.what(),      failure.WideMessage().c_str(), failure.Details().c_str()};
    try {
        // The name takes memory. Without it the failure is stored all the same.
        const std::string className = failure.GetClassName();
        report.className = className.c_str();
        LastError::Store(report);
    } catch (...) {
        LastError::Store(report);
    }
}

// The system's wide text, which has units of UTF-16 on Windows and code points elsewhere, as far as a message holds it.
// Null stays null.
template <std::size_t Size>
const char16_t* CutToUtf16(const wchar_t* text, char16_t (&units)[Size]) noexcept
{
    if (!text) return nullptr;
    constexpr std::uint32_t kFirstPair = 0x10000;
    std::size_t length = 0;
    for (; *text && length + 2 < Size; ++text) {
        const auto point = static_cast<std::uint32_t>(*text);
        if (point < kFirstPair) {
            units[length++] = static_cast<char16_t>(point);
        } else if (point <= 0x10FFFF) {
            units[length++] = static_cast<char16_t>(0xD800 + ((point - kFirstPair) >> 10));
            units[length++] = static_cast<char16_t>(0xDC00 + ((point - kFirstPair) & 0x3FF));
        } else {
            units[length++] = u'\uFFFD';
        }
    }
    units[length] = 0;
    return units;
}

}  // namespace

void NullHandle(const char* function)
{
    std::fprintf(stderr, "OrvActions: null handle in %s\n", function);
    std::abort();
}

void StoreCurrentException() noexcept
{
    try {
        throw;
    } catch (const Ulmo::UlmoException& failure) {
        StoreUlmoException(failure);
    } catch (const std::exception& failure) {
        LastError::Store({0, 0, kGenericException, failure.what(), nullptr, nullptr});
    } catch (const char* text) {
        LastError::Store({0, 0, kGenericException, text, nullptr, nullptr});
    } catch (const char16_t* text) {
        LastError::Store({0, 0, kGenericException, nullptr, text, nullptr});
    } catch (const wchar_t* text) {
        char16_t units[std::extent_v<decltype(TOrvLastError::messageW)> + 1];
        LastError::Store({0, 0, kGenericException, nullptr, CutToUtf16(text, units), nullptr});
    } catch (...) {
        LastError::Store({kUnknownCode, 0, kUnknownException, kUnknownException, nullptr, nullptr});
    }
}

}  // namespace OrvPLC
