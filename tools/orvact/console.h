// The console and the files of a command-line program. What is the same on both systems stands in console.cpp; the
// rest, with the entry point, in console_posix.cpp and console_windows.cpp, of which the build takes one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// The program, with its arguments (without its own name) in UTF-8; the result is the exit code. A lack of memory that it
// does not report itself ends it with a message and kUsage.
int Run(const std::vector<std::string>& arguments);

// Null when the file cannot be opened; errno says why. Bytes are read as they are.
std::FILE* OpenFile(const std::string& path);
// Reads what is there, and waits only if nothing is; 0 at the end and, with `failed` set and errno, on a failure.
// What is typed at a terminal arrives in UTF-8.
std::size_t ReadBytes(std::FILE* file, char* buffer, std::size_t size, bool& failed);
// The size of a file on a disk; 0 for a pipe, a terminal and everything else that a reader may have to wait for.
std::uint64_t SizeOnDisk(std::FILE* file);
bool IsFile(const std::string& path);  // exists, and is not a folder

// Results go to standard output, or to the file of SendOutputTo; everything else to standard error. The text is UTF-8;
// errors flush the results first, so that both stay in order on a screen. Control
// characters are not sent to a terminal.
void Print(std::string_view text);
void PrintError(std::string_view text);
// Bytes of a form that is not text.
void PrintBytes(std::string_view bytes);
// A line on the terminal of standard error that the next one, or the next error, replaces; "" removes it.
void PrintPassing(std::string_view line);
bool ShowsPassing();  // standard error is a terminal, and the results go elsewhere

// The results appear under that name when FinishOutput keeps them, all at once; false when the file cannot be made.
bool SendOutputTo(const std::string& path);
bool FlushOutput();             // false when not all results could be written
bool FinishOutput(bool keep);   // the same; the file then gets its name, or is removed

bool OutputIsTerminal();
std::size_t OutputWidth();  // of the terminal of standard output; 0 if it is not a terminal

// Colours are for a terminal without NO_COLOR, unless an option decides.
enum class Colours { Auto, Always, Never };
void UseColours(Colours when);
enum class Tone { Name, Quiet };
std::string Painted(Tone tone, std::string_view text);

// From the first call on Ctrl+C no longer ends the program: it is remembered, and ends a read that waits. The second
// one ends the program after all.
void CatchInterrupts();
bool Interrupted();
// For a thread beside the first: Ctrl+C ends a read of the first one, which is asked of nobody else.
void LeaveInterruptsToOthers();

// The systems' own, for console.cpp.
namespace System {
// What an entry point does. The arguments are read in here because there may be no memory for them.
int Start(const std::function<std::vector<std::string>()>& readArguments);
std::FILE* Create(const std::string& path);  // null and errno
bool Rename(const std::string& from, const std::string& to);
void Remove(const std::string& path);
bool OutputIsTerminal();
bool ErrorIsTerminal();
std::size_t OutputWidth();
bool Colourful();  // the terminal understands colours
void Write(std::FILE* stream, std::string_view text);
}  // namespace System
