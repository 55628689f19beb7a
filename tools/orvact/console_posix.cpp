#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include "console.h"

namespace {

// The only kind of variable that a handler of signals may write.
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
        // A signal other than the interrupt is no reason to stop reading.
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

bool IsFile(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
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

void LeaveInterruptsToOthers()
{
    sigset_t interrupts;
    sigemptyset(&interrupts);
    sigaddset(&interrupts, SIGINT);
    pthread_sigmask(SIG_BLOCK, &interrupts, nullptr);
}

std::FILE* System::Create(const std::string& path)
{
    return std::fopen(path.c_str(), "wb");
}

bool System::Rename(const std::string& from, const std::string& to)
{
    return std::rename(from.c_str(), to.c_str()) == 0;
}

void System::Remove(const std::string& path)
{
    std::remove(path.c_str());
}

bool System::OutputIsTerminal()
{
    return isatty(STDOUT_FILENO);
}

bool System::ErrorIsTerminal()
{
    return isatty(STDERR_FILENO) && Colourful();
}

std::size_t System::OutputWidth()
{
    struct winsize size {};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool System::Colourful()
{
    const char* terminal = std::getenv("TERM");
    return terminal && std::strcmp(terminal, "dumb") != 0;
}

void System::Write(std::FILE* stream, std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stream);
}

int main(int count, char** arguments)
{
    return System::Start([=] {
        return count > 0 ? std::vector<std::string>(arguments + 1, arguments + count) : std::vector<std::string>();
    });
}
