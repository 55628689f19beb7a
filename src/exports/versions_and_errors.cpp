// None of these goes through the frame, and none clears the last error.
#include "OrvActions/OrvErrors.h"
#include "exports/export_twin.h"
#include "exports/last_error.h"
#include "objects/message.h"
#include "platform/living_count.h"

using namespace OrvPLC;

ORV_EXPORT_TWIN(OrvBool, GetLastError, (TOrvLastErrorInfo * info), (info))
{
    return LastError::Read(*info);
}

ORV_EXPORT_TWIN(std::uint32_t, GetNumberOfOpenHandles, (), ())
{
    return Platform::LivingCount::Read();
}

ORV_EXPORT_TWIN(std::uint32_t, InterfaceVersion, (), ())
{
    return 143;
}

extern "C" const char* OrvAct_InterfaceDate()
{
    return "20.10.2022";
}

// Wide, unlike its counterpart; deliberate, callers of each family know theirs.
extern "C" const OrvWChar* Talvec_Action_InterfaceDate()
{
    return Boundary(u"20.10.2022");
}
