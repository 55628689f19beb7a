// What the two systems do differently for a command-line program. Behind it stand console_posix.cpp and
// console_windows.cpp, of which the build takes one; they also hold the entry point.
#pragma once

#include <OrvActions.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// The program, with its arguments (without its own name) in UTF-8; the result is the exit code.
int Run(const std::vector<std::string>& arguments);

// Null when the file cannot be opened; errno says why. Bytes are read as they are.
std::FILE* OpenFile(const std::string& path);
// Reads into a buffer; 0 at the end and on a failure, which ferror tells. What is typed at a terminal arrives in UTF-8.
std::size_t ReadBytes(std::FILE* file, char* buffer, std::size_t size);

// Results go to standard output, everything else to standard error. The text is UTF-8; errors flush the results first,
// so that both stay in order on a screen.
void Print(std::string_view text);
void PrintError(std::string_view text);
bool FlushOutput();  // false when not all results could be written

// Colours are for a terminal, and for one whose user did not set NO_COLOR.
enum class Tone { Name, Quiet };
std::string Painted(Tone tone, std::string_view text);

OrvBStr NewSystemString(const OrvWChar* text);
void FreeSystemString(OrvBStr text);

// For console.cpp, which holds what both systems share.
namespace System {
bool OutputIsTerminal();  // one that understands colours
void Write(std::FILE* stream, std::string_view text);
}  // namespace System
