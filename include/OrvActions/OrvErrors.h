/* The last error and the versions of the interface. Part of OrvActions.h. */
#ifndef ORV_ERRORS_H
#define ORV_ERRORS_H

#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* The code of this library's own failures; the sub-code says what went wrong. Failures of the system carry the
 * system's code, others code 0. */
enum {
    ORV_ERROR = 1008,
    ORV_SUBERROR_NO_SUCH_ROLE = 2,
    ORV_SUBERROR_WRONG_ACTION = 3,
    ORV_SUBERROR_NO_COUNTERPART = 3,
    ORV_SUBERROR_BUFFER_TOO_SMALL = 7,
    ORV_SUBERROR_WRONG_SIZE = 8
};

/* Both families. Tells why the last failed call on this thread failed: true and the record filled when the last call
 * failed, false and the record untouched when it succeeded. The texts stay valid until the next failure on this
 * thread. Does not clear the error. */
ORV_TWIN(OrvBool, GetLastError, (TOrvLastErrorInfo * info));

/* Both families. How many objects of this library are alive in the process; 0 when nothing leaked. */
ORV_TWIN(uint32_t, GetNumberOfOpenHandles, (void));

/* Both families. The version of this interface, 143. */
ORV_TWIN(uint32_t, InterfaceVersion, (void));

/* The date of this interface, "20.10.2022"; the families differ in the width of the text. */
ORV_API const char* OrvAct_InterfaceDate(void);
ORV_API const OrvWChar* Talvec_Action_InterfaceDate(void);

#if defined(__cplusplus)
}
#endif

#endif
