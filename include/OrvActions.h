/* OrvActions: the action library of a video-management platform.
 *
 * An action is a typed, named message with typed parameters: a command such as PanLeft, a notification such as
 * EventStarted. This library creates, inspects, compares, stores, restores and describes actions. Include this header
 * and link libOrvActions; there is nothing to initialise and nothing to shut down.
 *
 *     #include <OrvActions.h>
 *     #include <stdio.h>
 *
 *     int main(void)
 *     {
 *         TOrvHandle action = OrvAct_CreateFromTextBufferA("PanLeft (Camera: 7, Speed: 3)", ORV_LENGTH_TERMINATED,
 *                                                          ORV_EXPECT_ANY, 1, NULL);
 *         char text[200];
 *         if (action && OrvAct_StoreToTextBufferA(action, text, sizeof text, 1, 1, NULL)) puts(text);
 *         OrvAct_CloseHandle(action);
 *         return 0;
 *     }
 *
 * Conventions. The comment of a function says only where it differs.
 *
 *  1. A handle owns one reference to its object and is closed with OrvAct_CloseHandle. Functions borrow the handles and
 *     records that they are given and copy what they keep. A null handle is the caller's fault unless a comment
 *     allows it.
 *  2. A text that is returned by pointer belongs to the object or to the catalogue: do not free it. That of the
 *     catalogue lives as long as the library; that of an object until its parameter is set or removed, or until the
 *     object ends. A system string (OrvBStr) that is handed out belongs to the caller, who frees it with
 *     SysFreeString.
 *  3. OrvBool results: true for success. On failure the reason is in the calling thread's last error, see
 *     OrvAct_GetLastError, and outputs are as the failed step left them. A success clears the last error. An output
 *     pointer must not be null unless its comment allows it.
 *  4. Functions end in A or W where their texts differ: W takes UTF-16; A takes narrow text, in the system's ANSI code
 *     page unless a flag says UTF-8. Parameters and actions are found by name in any case.
 *  5. Lengths and sizes of wide texts count 16-bit units, of narrow texts bytes. The length of a text does not count
 *     its terminating zero; the size of a buffer, required or given, does.
 *  6. Stores into a buffer take the buffer, its size and a pointer for the required size, which may be null. The
 *     required size is always stored. A buffer that is null or too small stays as it was, the result is false and the
 *     last error "buffer too small" (code 1008, sub-code 7). So ask with a null buffer first.
 *  7. Any thread may call at any time, but one action is for one thread at a time; reads that convert a value count as
 *     writes. Handles may pass between threads.
 *  8. Every OrvAct_ function marked "both families" exists under Talvec_Action_ as well and does the same; in
 *     OrvMatch.h the two families are OrvMatchAct_ and TalvecMatchAct_. "All four families" means all of these.
 *  9. No exception leaves a function.
 */
#ifndef ORV_ACTIONS_H
#define ORV_ACTIONS_H

#include "OrvActions/OrvAccess.h"
#include "OrvActions/OrvBinary.h"
#include "OrvActions/OrvCatalogue.h"
#include "OrvActions/OrvEnums.h"
#include "OrvActions/OrvErrors.h"
#include "OrvActions/OrvEvents.h"
#include "OrvActions/OrvGenerated.h"
#include "OrvActions/OrvInterfaces.h"
#include "OrvActions/OrvJson.h"
#include "OrvActions/OrvMatch.h"
#include "OrvActions/OrvObjects.h"
#include "OrvActions/OrvPointers.h"
#include "OrvActions/OrvProperties.h"
#include "OrvActions/OrvSinks.h"
#include "OrvActions/OrvSystemStrings.h"
#include "OrvActions/OrvText.h"
#include "OrvActions/OrvTypes.h"
#include "OrvActions/OrvVersion.h"

#endif
