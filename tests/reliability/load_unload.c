/* Loads and unloads the library under Windows over and over, with a thread that uses it and ends each time.
 *
 *     reliability_load_unload OrvActions.dll TIMES */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <windows.h>

typedef uint32_t (*Number)(void);
typedef void* (*Create)(const wchar_t* name);
typedef uint8_t (*OnHandle)(void* handle);
typedef uint8_t (*SetInput)(void* handle, const void* channel);

static HMODULE library;

/* The system gives a function of any kind as one of no arguments. */
#define FIND(Type, name) ((Type)(void (*)(void))GetProcAddress(library, name))

static DWORD WINAPI Use(void* unused)
{
    (void)unused;
    Create create = FIND(Create, "Talvec_Action_CreateActionByName");
    SetInput fail = FIND(SetInput, "OrvAct_SetVideoInput");
    OnHandle closeHandle = FIND(OnHandle, "OrvAct_CloseHandle");
    void* object = create(L"Nobody");
    const int right = object && !fail(object, NULL);
    closeHandle(object);
    return right ? 0 : 1;
}

int main(int count, char** arguments)
{
    const int times = count > 2 ? atoi(arguments[2]) : 50;
    int wrong = 0;
    if (count < 2) return 2;
    for (int i = 0; i < times; ++i) {
        library = LoadLibraryA(arguments[1]);
        if (!library) {
            printf("the library does not load: %lu\n", GetLastError());
            return 1;
        }
        DWORD verdict = 1;
        HANDLE thread = CreateThread(NULL, 0, Use, NULL, 0, NULL);
        WaitForSingleObject(thread, INFINITE);
        GetExitCodeThread(thread, &verdict);
        CloseHandle(thread);
        Number open = FIND(Number, "OrvAct_GetNumberOfOpenHandles");
        wrong += verdict != 0 || open() != 0;
        FreeLibrary(library);
        wrong += GetModuleHandleA("OrvActions.dll") != NULL; /* it really went */
    }
    printf("loads %d\nwrong %d\n", times, wrong);
    return wrong != 0;
}
