// The exception of Microsoft's compiler, as far as others see it.
#include <windows.h>

#include <cstdlib>

[[noreturn]] void RaiseForeign()
{
    RaiseException(0xE06D7363, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}
