#include "exports/frame.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

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
        const std::string className = failure.GetClassName();
        report.className = className.c_str();
        LastError::Store(report);
    } catch (...) {
        LastError::Store(report);
    }
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
    } catch (...) {
        LastError::Store({kUnknownCode, 0, kUnknownException, kUnknownException, nullptr, nullptr});
    }
}

}  // namespace OrvPLC
