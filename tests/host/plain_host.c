/* A host in plain C that knows the library by its file name only: it loads it, finds functions by name and calls the
 * operations of an object through the numbers of their slots, as a compiler of another maker would.
 *
 *     plain_host LIBRARY     exit code 0 when every answer is the expected one
 */
#include <OrvActions.h>
#include <stdio.h>
#include <string.h>

#if defined(_WIN32)
#include <windows.h>
typedef HMODULE Library;
#define TEXT_OF(text) L##text
static Library Load(const char* path)
{
    return LoadLibraryA(path);
}
static void* Find(Library library, const char* name)
{
    void* address;
    FARPROC found = GetProcAddress(library, name);
    memcpy(&address, &found, sizeof address);
    return address;
}
static int Unload(Library library)
{
    return FreeLibrary(library) != 0;
}
#else
#include <dlfcn.h>
typedef void* Library;
#define TEXT_OF(text) u##text
static Library Load(const char* path)
{
    return dlopen(path, RTLD_NOW);
}
static void* Find(Library library, const char* name)
{
    return dlsym(library, name);
}
static int Unload(Library library)
{
    return dlclose(library) == 0;
}
#endif

static int failures = 0;

static void Check(int right, const char* what)
{
    if (right) return;
    ++failures;
    fprintf(stderr, "wrong: %s\n", what);
}

/* Places of the operations in the table. */
enum {
    AddRef = 1,
    Release = 2,
    GetMessageKind = 3,
    GetActionCode = 9,
    GetActionName = 10,
    GetParameterCount = 16,
    HasParameter = 18,
    GetInt32 = 23,
    SetInt32 = 35,
    SetEnum = 46,
    GetDescription = 48,
    HasDescription = 51
};

typedef void (*Operation)(void);
static Operation Slot(void* object, int place)
{
    return (*(Operation**)object)[place];
}

typedef uint32_t (*Number)(void*);
typedef const OrvWChar* (*Words)(void*);
typedef uint8_t (*Truth)(void*);

static int SameText(const OrvWChar* a, const OrvWChar* b)
{
    while (*a && *a == *b) ++a, ++b;
    return *a == *b;
}

static void WalkTable(TOrvHandle handle)
{
    int32_t speed = 0;
    Check(((Number)Slot(handle, GetMessageKind))(handle) == ORV_MESSAGE_ACTION, "GetMessageKind");
    Check(((Number)Slot(handle, GetActionCode))(handle) == ORV_ACTION_PanLeft, "GetActionCode");
    Check(SameText(((Words)Slot(handle, GetActionName))(handle), TEXT_OF("PanLeft")), "GetActionName");
    ((void (*)(void*, const OrvWChar*, int32_t))Slot(handle, SetInt32))(handle, TEXT_OF("speed"), 4);
    Check(((uint8_t(*)(void*, const OrvWChar*, int32_t*))Slot(handle, GetInt32))(handle, TEXT_OF("SPEED"), &speed) &&
              speed == 4,
          "GetInt32");
    ((void (*)(void*, const OrvWChar*, int32_t, uint32_t))Slot(handle, SetEnum))(handle, TEXT_OF("mode"), 1, 4149);
    Check(((uint8_t(*)(void*, const OrvWChar*))Slot(handle, HasParameter))(handle, TEXT_OF("Mode")), "HasParameter");
    Check(((Number)Slot(handle, GetParameterCount))(handle) == 2, "GetParameterCount");
    Check(SameText(((Words)Slot(handle, GetDescription))(handle), TEXT_OF("")), "GetDescription");
    Check(!((Truth)Slot(handle, HasDescription))(handle), "HasDescription");
    Check(((Number)Slot(handle, AddRef))(handle) == 2, "AddRef");
    Check(((Number)Slot(handle, Release))(handle) == 1, "Release");
}

static void CallFunctions(Library library)
{
    TOrvHandle (*create)(const OrvWChar*);
    OrvBool (*store)(TOrvHandle, OrvWChar*, uint32_t, OrvBool, OrvWord, uint32_t*);
    OrvBool (*close)(TOrvHandle);
    uint32_t (*open)(void);
    OrvBool (*matchName)(TOrvHandle, const OrvWChar**);
    TOrvHandle (*createMatch)(const OrvWChar*);
    const OrvWChar* name = NULL;
    OrvWChar text[100];
    TOrvHandle action, match;
    *(void**)&create = Find(library, "Talvec_Action_CreateActionByName");
    *(void**)&store = Find(library, "OrvAct_StoreToTextBufferW");
    *(void**)&close = Find(library, "OrvAct_CloseHandle");
    *(void**)&open = Find(library, "OrvAct_GetNumberOfOpenHandles");
    *(void**)&matchName = Find(library, "OrvMatchAct_GetActionNameW");
    *(void**)&createMatch = Find(library, "TalvecMatchAct_CreateActionByName");
    Check(create && store && close && open && matchName && createMatch, "a function of each family");
    if (failures) return;
    action = create(TEXT_OF("panleft"));
    WalkTable(action);
    Check(store(action, text, 100, 0, 0, NULL) && SameText(text, TEXT_OF("panleft (speed: 4, mode: 1)")), "text");
    match = createMatch(TEXT_OF("PanLeft"));
    Check(matchName(match, &name) && SameText(name, TEXT_OF("PanLeft")), "OrvMatchAct_GetActionNameW");
    Check(open() == 2, "two open objects");
    close(match);
    close(action);
    Check(open() == 0, "no open object");
}

int main(int argc, char** argv)
{
    int round;
    if (argc != 2) return 2;
    /* Twice, since a library must come and go without a trace. */
    for (round = 0; round < 2; ++round) {
        Library library = Load(argv[1]);
        if (!library) {
            fprintf(stderr, "cannot load %s\n", argv[1]);
            return 1;
        }
        CallFunctions(library);
        Check(Unload(library), "unload");
    }
    return failures != 0;
}
