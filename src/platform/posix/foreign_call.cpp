#include "platform/foreign_call.h"

namespace Platform {

// All compilers share one form of exceptions here.
void RunForeign(void (*work)(void* context), void* context)
{
    work(context);
}

}  // namespace Platform
