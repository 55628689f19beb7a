#include "platform/system_log.h"

#include <cstdlib>
#include <cstring>

#include "platform/windows/windows_api.h"

namespace Platform {

namespace {

// The identity of the process's user in a block of malloc; null if the system does not know it.
void* UserOfProcess()
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return nullptr;
    alignas(TOKEN_USER) unsigned char block[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    const bool known = GetTokenInformation(token, TokenUser, block, sizeof block, &size);
    CloseHandle(token);
    if (!known) return nullptr;
    TOKEN_USER user;
    std::memcpy(&user, block, sizeof user);
    // The identity lies behind the record in the block, which ends with this function.
    const DWORD length = GetLengthSid(user.User.Sid);
    void* copy = std::malloc(length);
    if (copy) std::memcpy(copy, user.User.Sid, length);
    return copy;
}

}  // namespace

SystemLog::SystemLog(const char16_t* source)
    : source_(RegisterEventSourceW(nullptr, AsWide(source))), owner_(UserOfProcess())
{}

SystemLog::~SystemLog()
{
    if (source_) DeregisterEventSource(source_);
    std::free(owner_);
}

bool SystemLog::Write(std::uint16_t type, const std::u16string& line)
{
    const wchar_t* text = AsWide(line.c_str());
    return ReportEventW(source_, type, 0, 0, owner_, 1, 0, &text, nullptr);
}

void* LoadSystemLogTexts()
{
    constexpr DWORD kSearchDefaultFolders = 0x1000;
    return LoadLibraryExW(L"EventLogOutput.dll", nullptr, kSearchDefaultFolders);
}

}  // namespace Platform
