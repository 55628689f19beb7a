/* The last error and the versions of the interface. Part of OrvActions.h. */
#ifndef ORV_ERRORS_H
#define ORV_ERRORS_H

#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* The code of this library's own failures; the sub-code says what went wrong. Failures of the system carry the
 * system's code, others code 0. docs/conventions.md lists all. */
enum {
    ORV_ERROR = 1008,
    ORV_SUBERROR_NO_SUCH_ROLE = 2,     /* a setter by role, for an action without that role */
    ORV_SUBERROR_WRONG_ACTION = 3,     /* a decode function, for another action */
    ORV_SUBERROR_NO_COUNTERPART = 3,   /* a conversion from or to text of the sibling product */
    ORV_SUBERROR_BUFFER_TOO_SMALL = 7, /* a store; the required size is set all the same */
    ORV_SUBERROR_WRONG_SIZE = 8        /* the size field of a TOrvEventData */
};

/* Both families. Why the last call on this thread failed: true with the record filled if it failed, false with the
 * record untouched if it succeeded. Calls that leave the last error alone (their comments say so) do not count. The
 * texts belong to the thread and stay valid until its next failure. Does not clear the error.
 *   info  out, not null */
ORV_API OrvBool OrvAct_GetLastError(TOrvLastErrorInfo* info);
ORV_API OrvBool Talvec_Action_GetLastError(TOrvLastErrorInfo* info);

/* Both families. How many objects of this library are alive in the process; 0 when nothing leaked. */
ORV_API uint32_t OrvAct_GetNumberOfOpenHandles(void);
ORV_API uint32_t Talvec_Action_GetNumberOfOpenHandles(void);

/* Both families. The version of this interface, 143. */
ORV_API uint32_t OrvAct_InterfaceVersion(void);
ORV_API uint32_t Talvec_Action_InterfaceVersion(void);

/* The date of this interface, "20.10.2022"; the families differ in the width of the text. */
ORV_API const char* OrvAct_InterfaceDate(void);
ORV_API const OrvWChar* Talvec_Action_InterfaceDate(void);

#if defined(__cplusplus)
}
#endif

#endif
