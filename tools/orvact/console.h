// What the two systems do differently for a command-line program. Behind it stand console_posix.cpp and
// console_windows.cpp, of which the build takes one; they also hold the entry point.
#pragma once

#include <OrvActions.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// The program, with its arguments (without its own name) in UTF-8; the result is the exit code.
int Run(const std::vector<std::string>& arguments);

// Null when the file cannot be opened; errno says why. Bytes are read as they are.
std::FILE* OpenFile(const std::string& path);
// Reads what is there, and waits only while nothing is; 0 at the end and, with `failed` set and errno, on a failure.
// What is typed at a terminal arrives in UTF-8.
std::size_t ReadBytes(std::FILE* file, char* buffer, std::size_t size, bool& failed);
// The size of a file on a disk; 0 for a pipe, a terminal and whatever else may keep its reader waiting.
std::uint64_t SizeOnDisk(std::FILE* file);

// Results go to standard output, everything else to standard error. The text is UTF-8; errors flush the results first,
// so that both stay in order on a screen.
void Print(std::string_view text);
void PrintError(std::string_view text);
// A line on the terminal of standard error that the next one, or the next error, replaces; "" takes it away.
void PrintPassing(std::string_view line);
bool FlushOutput();  // false when not all results could be written

// Colours are for a terminal, and for one whose user did not set NO_COLOR.
enum class Tone { Name, Quiet };
std::string Painted(Tone tone, std::string_view text);

// From the first call on Ctrl+C no longer ends the program: it is remembered, and ends a read that waits. The second
// one ends the program after all.
void CatchInterrupts();
bool Interrupted();

OrvBStr NewSystemString(const OrvWChar* text);
std::size_t SystemStringLength(OrvBStr text);  // in units
void FreeSystemString(OrvBStr text);

// For console.cpp, which holds what both systems share.
namespace System {
bool OutputIsTerminal();  // one that understands colours
bool ErrorIsTerminal();   // one that goes back to the start of a line
void Write(std::FILE* stream, std::string_view text);
}  // namespace System
