#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "console.h"

std::FILE* OpenFile(const std::string& path)
{
    return std::fopen(path.c_str(), "rb");
}

std::size_t ReadBytes(std::FILE* file, char* buffer, std::size_t size)
{
    return std::fread(buffer, 1, size, file);
}

OrvBStr NewSystemString(const OrvWChar* text)
{
    return SysAllocString(text);
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

void System::Write(std::FILE* stream, std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stream);
}

int main(int count, char** arguments)
{
    return Run(count > 0 ? std::vector<std::string>(arguments + 1, arguments + count) : std::vector<std::string>());
}
