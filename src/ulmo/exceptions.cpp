#include "ulmo/exceptions.h"

#include <utility>

#include "platform/system_error.h"
#include "platform/text.h"
#include "ulmo/exception_history.h"
#include "ulmo/number_text.h"
#include "ulmo/type_name.h"

namespace Ulmo {

namespace {

constexpr std::uint32_t kDateTimeClass = 5;

// The platform's conversions, not those of string_conversion.h: a failure to convert the text of a failure must not
// raise the next one.
std::string Narrowed(std::u16string_view text)
{
    std::string narrow;
    Platform::ToNarrow(Platform::CodePage::Ansi, text, narrow);
    return narrow;
}

std::u16string Widened(std::string_view text)
{
    std::u16string wide;
    Platform::ToWide(Platform::CodePage::Ansi, text, wide);
    return wide;
}

std::u16string SystemMessage(std::uint32_t code, std::u16string_view function)
{
    std::u16string message = Platform::SystemErrorText(code);
    if (message.empty()) message = u"Unknown system error";
    message += u" [ErrorCode #";
    AppendUnsigned(message, Platform::ToldCode(code));
    message += u']';
    if (!function.empty()) message.append(u" in ").append(function);
    return message;
}

std::u16string MemoryMessage(std::size_t size, std::u16string_view where)
{
    std::u16string message = u"Out of memory during allocation of ";
    AppendUnsigned(message, size);
    return message.append(u" bytes in ").append(where);
}

}  // namespace

UlmoException::UlmoException(std::u16string message, std::uint32_t errorCode, std::uint32_t errorClass,
                             std::string details)
    : errorClass_(errorClass),
      errorCode_(errorCode),
      narrowMessage_(Narrowed(message)),
      wideMessage_(std::move(message)),
      details_(std::move(details))
{
    ExceptionHistory::Remember(*this);
}

UlmoException::UlmoException(std::string message, std::uint32_t errorCode, std::uint32_t errorClass,
                             std::string details)
    : errorClass_(errorClass),
      errorCode_(errorCode),
      narrowMessage_(std::move(message)),
      wideMessage_(Widened(narrowMessage_)),
      details_(std::move(details))
{
    ExceptionHistory::Remember(*this);
}

UlmoException::UlmoException(const char* message, std::uint32_t errorCode, std::uint32_t errorClass,
                             std::string details)
    : UlmoException(std::string(message ? message : ""), errorCode, errorClass, std::move(details))
{}

UlmoException::~UlmoException() = default;

std::string UlmoException::GetClassName() const
{
    return TypeName(typeid(*this));
}

EUlmoDateTime::EUlmoDateTime(std::u16string message, std::uint32_t code)
    : UlmoException(std::move(message), code, kDateTimeClass)
{}

SystemException::SystemException(std::uint32_t code, std::u16string_view function)
    : UlmoException(SystemMessage(code, function), Platform::ToldCode(code))
{}

void ThrowSystemError(std::uint32_t code, std::u16string_view function)
{
    throw SystemException(code, function);
}

void ThrowLastError(std::u16string_view function)
{
    throw SystemException(Platform::LastError(), function);
}

OutOfMemoryException::OutOfMemoryException(std::size_t size, std::u16string_view where)
    : UlmoException(MemoryMessage(size, where))
{}

GuidConversionException::GuidConversionException(std::u16string_view text)
    : UlmoException(std::u16string(u"Conversion of guid '").append(text).append(u"' failed."))
{}

GuidConversionException::GuidConversionException(std::string_view text)
    : UlmoException(std::string("Conversion of guid '").append(text).append("' failed."))
{}

VariantExceptions::VariantStringConversionException::VariantStringConversionException()
    : VariantException("VariantException")
{}

}  // namespace Ulmo
