// Writes a report when the process crashes, if the administrator has configured a folder for it.
//
// The configuration under SOFTWARE\Tessarine\Ulmo is read when the library is loaded:
//
//     "CrashDumpFolder"   an existing folder for the report; without it there is none
//     "CrashMessageBox"   1 shows a message box as well; Windows only
//
// On Windows the report is a mini dump, "<program>-<process id>-<tick count>.dmp". The filter for unhandled exceptions
// and the termination handler are always installed, since a crash may reach either; the ones that were installed before
// run after them. On Linux the report is a text, "<program>-<process id>-<seconds>.crash", with the signal, the stack
// and the memory map. There nothing is installed without a folder, since signals belong to the host. The handlers that
// were there before run after the report, so a core file is written as usual.
//
// One report a process: only the first crash is reported.
#pragma once

namespace Platform {

void InstallCrashHandler();  // once, when the library is loaded; never fails
void RemoveCrashHandler();   // when it is unloaded: restores what is still ours

}  // namespace Platform
