/* A program by Microsoft's conventions without its run-time library, which Debian lacks: what it needs in addition to
 * OrvActions.lib it declares itself. */
#include <OrvActions.h>

#define STD_OUTPUT ((unsigned long)-11)
__declspec(dllimport) void* __stdcall GetStdHandle(unsigned long which);
__declspec(dllimport) int __stdcall WriteFile(void* file, const void* bytes, unsigned long size, unsigned long* written,
                                              void* overlapped);
__declspec(dllimport) __declspec(noreturn) void __stdcall ExitProcess(unsigned code);

void start(void)
{
    static char text[200];
    uint32_t size = 0;
    unsigned long written;
    TOrvHandle action =
        OrvAct_CreateFromTextBufferA("PanLeft (Camera: 7, Speed: 3)", ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 1, NULL);
    if (!action || !OrvAct_StoreToTextBufferA(action, text, sizeof text, 1, 1, &size)) ExitProcess(1);
    WriteFile(GetStdHandle(STD_OUTPUT), text, size - 1, &written, NULL);
    ExitProcess(OrvAct_CloseHandle(action) ? 0 : 1);
}
