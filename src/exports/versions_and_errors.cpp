// None of these goes through the frame, and none clears the last error.
#include "OrvActions/OrvErrors.h"
#include "exports/export_alias.h"
#include "exports/last_error.h"
#include "objects/message.h"
#include "platform/living_count.h"

using namespace OrvPLC;

OrvBool OrvAct_GetLastError(TOrvLastErrorInfo* info)
{
    return LastError::Read(*info);
}
ORV_ALIAS(Talvec_Action_GetLastError, OrvAct_GetLastError);

std::uint32_t OrvAct_GetNumberOfOpenHandles()
{
    return Platform::LivingCount::Read();
}
ORV_ALIAS(Talvec_Action_GetNumberOfOpenHandles, OrvAct_GetNumberOfOpenHandles);

std::uint32_t OrvAct_InterfaceVersion()
{
    return 143;
}
ORV_ALIAS(Talvec_Action_InterfaceVersion, OrvAct_InterfaceVersion);

const char* OrvAct_InterfaceDate()
{
    return "20.10.2022";
}

// Wide, unlike its counterpart; deliberate, callers of each family know theirs.
const OrvWChar* Talvec_Action_InterfaceDate()
{
    return Boundary(u"20.10.2022");
}
