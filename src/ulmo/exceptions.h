// The family of failures. Every failure of this library travels as one of these and ends in the frame of the exported
// calls. Exceptions are for failures, not for control flow: each construction is remembered in a process-wide history.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace Ulmo {

class UlmoException : public std::exception {
public:
    // The other form of the message is derived through the ANSI code page.
    explicit UlmoException(std::u16string message, std::uint32_t errorCode = 0, std::uint32_t errorClass = 0,
                           std::string details = {});
    explicit UlmoException(std::string message, std::uint32_t errorCode = 0, std::uint32_t errorClass = 0,
                           std::string details = {});
    explicit UlmoException(const char* message, std::uint32_t errorCode = 0, std::uint32_t errorClass = 0,
                           std::string details = {});
    UlmoException(const UlmoException&) = default;  // a copy is not remembered again
    UlmoException& operator=(const UlmoException&) = default;
    ~UlmoException() override;

    const char* what() const noexcept override { return narrowMessage_.c_str(); }
    virtual std::string GetClassName() const;  // of the most derived type, e.g. "Ulmo::SystemException"

    const std::u16string& WideMessage() const noexcept { return wideMessage_; }
    const std::string& NarrowMessage() const noexcept { return narrowMessage_; }
    std::uint32_t ErrorCode() const noexcept { return errorCode_; }
    std::uint32_t ErrorClass() const noexcept { return errorClass_; }
    const std::string& Details() const noexcept { return details_; }

private:
    std::uint32_t errorClass_;
    std::uint32_t errorCode_;
    std::string narrowMessage_;
    std::u16string wideMessage_;
    std::string details_;
};

// A failure of the date type; its codes stand in date_time.h.
class EUlmoDateTime : public UlmoException {
public:
    EUlmoDateTime(std::u16string message, std::uint32_t code);  // error class 5
};

class StringConversionException : public UlmoException {
public:
    using UlmoException::UlmoException;
};

// A failed system call: the system's text, " [ErrorCode #n]" and, when a function is named, " in " and its name.
class SystemException : public UlmoException {
public:
    explicit SystemException(std::uint32_t code, std::u16string_view function = {});
};

[[noreturn]] void ThrowSystemError(std::uint32_t code, std::u16string_view function);
[[noreturn]] void ThrowLastError(std::u16string_view function);  // with the calling thread's last system error

class OutOfMemoryException : public UlmoException {
public:
    explicit OutOfMemoryException(std::size_t size, std::u16string_view where = u"FlatMemory");
};

class GuidConversionException : public UlmoException {
public:
    explicit GuidConversionException(std::u16string_view text);
    explicit GuidConversionException(std::string_view text);
};

namespace VariantExceptions {

class VariantException : public UlmoException {
public:
    using UlmoException::UlmoException;
};

class VariantStringConversionException : public VariantException {
public:
    VariantStringConversionException();  // always "VariantException"
};

class VariantStringToValueConversionException : public VariantException {
public:
    using VariantException::VariantException;
};

}  // namespace VariantExceptions

}  // namespace Ulmo
