#include "platform/system_error.h"

#include "platform/windows/windows_api.h"

namespace Platform {

std::uint32_t LastError()
{
    return ::GetLastError();
}

void SetLastError(std::uint32_t code)
{
    ::SetLastError(code);
}

std::u16string SystemErrorText(std::uint32_t code)
{
    wchar_t* block = nullptr;
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, 0,
                       reinterpret_cast<wchar_t*>(&block), 0, nullptr);  // the call stores the block's address there
    std::u16string text(block, block + length);
    LocalFree(block);
    text.erase(text.find_last_not_of(u"\r\n") + 1);
    return text;
}

}  // namespace Platform
