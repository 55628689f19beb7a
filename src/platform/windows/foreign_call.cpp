#include "platform/foreign_call.h"

#include "platform/windows/windows_api.h"

namespace {

constexpr DWORD kMicrosoftException = 0xE06D7363;  // what Microsoft's compiler throws

}  // namespace

// Named by the assembler lines below.
extern "C" [[gnu::used]] long OrvIsForeignException(EXCEPTION_POINTERS* raised, void*)
{
    return raised->ExceptionRecord->ExceptionCode == kMicrosoftException ? EXCEPTION_EXECUTE_HANDLER
                                                                         : EXCEPTION_CONTINUE_SEARCH;
}

namespace {

// False if the work ended in such an exception. This compiler lacks __try, but the assembler takes what one compiles
// to: a table of the guarded instructions, the filter that is asked, and the place to go on. The code between the labels
// may be left at any point, so nothing that is needed after them may live in a register.
[[gnu::noinline, gnu::noclone]] bool Ends(void (*work)(void* context), void* context)
{
    volatile bool done = false;
    asm volatile(
        ".seh_handler __C_specific_handler, @except\n\t"
        ".seh_handlerdata\n\t"
        ".long 1\n\t"
        ".rva orv_foreign_begin, orv_foreign_end, OrvIsForeignException, orv_foreign_end\n\t"
        ".seh_code\n"
        "orv_foreign_begin:" ::
            : "memory");
    work(context);
    done = true;
    asm volatile("nop\norv_foreign_end:" ::: "memory");
    return done;
}

}  // namespace

namespace Platform {

void RunForeign(void (*work)(void* context), void* context)
{
    if (!Ends(work, context)) throw ForeignException();
}

}  // namespace Platform
