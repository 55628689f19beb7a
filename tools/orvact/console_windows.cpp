// The console speaks UTF-16 and is written and read as such; files and pipes carry UTF-8 bytes.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <iterator>

#include "console.h"

namespace {

std::atomic<bool> interrupted = false;  // the handler runs on a thread of its own

// Asked for the size first; half a pair becomes a replacement character.
std::string Narrow(const wchar_t* text, int length)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring Wide(std::string_view text)
{
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), size);
    return wide;
}

// The console behind a stream, null for a file or a pipe.
HANDLE ConsoleOf(std::FILE* stream)
{
    const HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) ? handle : nullptr;
}

// One line at most, as the console gives it; Ctrl+Z at the start of a line ends the input.
std::size_t ReadConsoleBytes(HANDLE console, char* buffer, std::size_t size)
{
    static std::string pending;
    static bool ended = false;
    if (pending.empty() && !ended) {
        wchar_t units[1024];
        DWORD count = 0;
        ended = !ReadConsoleW(console, units, static_cast<DWORD>(std::size(units)), &count, nullptr) || count == 0 ||
                units[0] == 0x1A;
        if (!ended) pending = Narrow(units, static_cast<int>(count));
    }
    const std::size_t taken = std::min(size, pending.size());
    std::copy_n(pending.begin(), taken, buffer);
    pending.erase(0, taken);
    return taken;
}

}  // namespace

std::FILE* OpenFile(const std::string& path)
{
    return _wfopen(Wide(path).c_str(), L"rb");
}

std::size_t ReadBytes(std::FILE* file, char* buffer, std::size_t size, bool& failed)
{
    if (file == stdin) {
        if (const HANDLE console = ConsoleOf(file)) return ReadConsoleBytes(console, buffer, size);
        _setmode(_fileno(file), _O_BINARY);
    }
    const int count = _read(_fileno(file), buffer, static_cast<unsigned>(std::min<std::size_t>(size, 1 << 20)));
    if (count >= 0) return static_cast<std::size_t>(count);
    failed = !Interrupted();
    return 0;
}

std::uint64_t SizeOnDisk(std::FILE* file)
{
    const HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    LARGE_INTEGER size;
    const bool known = GetFileType(handle) == FILE_TYPE_DISK && GetFileSizeEx(handle, &size);
    return known ? static_cast<std::uint64_t>(size.QuadPart) : 0;
}

bool IsFile(const std::string& path)
{
    const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

void CatchInterrupts()
{
    SetConsoleCtrlHandler([](DWORD event) -> BOOL { return event == CTRL_C_EVENT && !interrupted.exchange(true); },
                          TRUE);
}

bool Interrupted()
{
    return interrupted;
}

// The system calls back in a thread of its own.
void LeaveInterruptsToOthers()
{}

std::FILE* System::Create(const std::string& path)
{
    return _wfopen(Wide(path).c_str(), L"wb");
}

bool System::Rename(const std::string& from, const std::string& to)
{
    // Unlike rename of C, which refuses a name that is taken on this system.
    return MoveFileExW(Wide(from).c_str(), Wide(to).c_str(), MOVEFILE_REPLACE_EXISTING);
}

void System::Remove(const std::string& path)
{
    DeleteFileW(Wide(path).c_str());
}

bool System::OutputIsTerminal()
{
    return ConsoleOf(stdout) != nullptr;
}

bool System::ErrorIsTerminal()
{
    return ConsoleOf(stderr) != nullptr;
}

std::size_t System::OutputWidth()
{
    CONSOLE_SCREEN_BUFFER_INFO info;
    const HANDLE console = ConsoleOf(stdout);
    const bool known = console && GetConsoleScreenBufferInfo(console, &info);
    return known ? static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1) : 0;
}

bool System::Colourful()
{
    const HANDLE console = ConsoleOf(stdout);
    DWORD mode = 0;
    return console && GetConsoleMode(console, &mode) &&
           SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

void System::Write(std::FILE* stream, std::string_view text)
{
    constexpr std::size_t kPiece = 8192;  // an older console refuses much more at once
    const HANDLE console = ConsoleOf(stream);
    if (!console) {
        std::fwrite(text.data(), 1, text.size(), stream);
        return;
    }
    const std::wstring wide = Wide(text);
    for (std::size_t begin = 0; begin < wide.size(); begin += kPiece) {
        DWORD written = 0;
        const auto count = static_cast<DWORD>(std::min(kPiece, wide.size() - begin));
        WriteConsoleW(console, wide.data() + begin, count, &written, nullptr);
    }
}

int wmain(int count, wchar_t** arguments)
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    return System::Start([=] {
        std::vector<std::string> texts;
        for (int i = 1; i < count; ++i) {
            texts.push_back(Narrow(arguments[i], -1));
            texts.back().pop_back();  // the terminator was counted
        }
        return texts;
    });
}
