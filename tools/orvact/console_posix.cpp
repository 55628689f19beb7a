#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "console.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;

}  // namespace

std::FILE* OpenFile(const std::string& path)
{
    return std::fopen(path.c_str(), "rb");
}

std::size_t ReadBytes(std::FILE* file, char* buffer, std::size_t size, bool& failed)
{
    for (;;) {
        const ssize_t count = read(fileno(file), buffer, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) failed = true;
        if (failed || Interrupted()) return 0;
    }
}

std::uint64_t SizeOnDisk(std::FILE* file)
{
    struct stat status;
    const bool known = fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
    return known ? static_cast<std::uint64_t>(status.st_size) : 0;
}

void CatchInterrupts()
{
    struct sigaction action {};
    action.sa_handler = [](int) { interrupted = 1; };
    action.sa_flags = static_cast<int>(SA_RESETHAND);  // not SA_RESTART: a read that waits must end
    sigaction(SIGINT, &action, nullptr);
}

bool Interrupted()
{
    return interrupted != 0;
}

OrvBStr NewSystemString(const OrvWChar* text)
{
    return SysAllocString(text);
}

std::size_t SystemStringLength(OrvBStr text)
{
    return SysStringLen(text);
}

void FreeSystemString(OrvBStr text)
{
    SysFreeString(text);
}

bool System::OutputIsTerminal()
{
    const char* terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) && terminal && std::strcmp(terminal, "dumb") != 0;
}

bool System::ErrorIsTerminal()
{
    const char* terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) && terminal && std::strcmp(terminal, "dumb") != 0;
}

void System::Write(std::FILE* stream, std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stream);
}

int main(int count, char** arguments)
{
    return Run(count > 0 ? std::vector<std::string>(arguments + 1, arguments + count) : std::vector<std::string>());
}
