// What happens when the process crashes: a report that can be read after the fact, where the administrator wants one.
//
// The configuration says so under SOFTWARE\Tessarine\Ulmo, read when the library is loaded:
//
//     "CrashDumpFolder"   the folder, which must exist, that a report of a crash is written to; none without it
//     "CrashMessageBox"   1 shows a message box as well; Windows only
//
// On Windows the report is a mini dump, "<program>-<process id>-<tick count>.dmp". The filter for unhandled exceptions
// and the termination handler are installed always, as part of a crash may be told to both, and what was installed
// before them runs after them. On Linux the report is a text, "<program>-<process id>-<seconds>.crash", with the
// signal, the stack and the memory map. There nothing is installed without a folder: signals belong to the host. The
// handlers that were there before run after the report, so that a core file is written as without us.
//
// One report a process: the first crash is the one that tells.
#pragma once

namespace Platform {

void InstallCrashHandler();  // once, when the library is loaded; never fails
void RemoveCrashHandler();   // when it is unloaded: sets back what is still ours

}  // namespace Platform
