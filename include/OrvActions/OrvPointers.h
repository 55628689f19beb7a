/* Actions as interface pointers, and creation by name and code. Part of OrvActions.h.
 *
 * A handle and the interface pointer of an object are the same pointer; the forms differ in who owns which reference.
 *
 *     handle    TalvecMatchAct_CreateActionBy<Source>              the caller owns one reference and closes it
 *     bare      Talvec_Action_CreateIOrv<Object><Source>           count 0: the caller's smart pointer takes the first
 *                                                                  reference, and the object ends with the last Release
 *     counted   Talvec_Action_CreateIOrv<Object>Pointer<Source>    the out pointer owns one reference
 *
 * Object is what is built: Action, MatchAction, or Message for either. The counted forms answer ORV_STATUS_OK,
 * ORV_STATUS_FAIL when there is no object, or ORV_STATUS_POINTER for a null out pointer; the out pointer is written on
 * success alone. If there is no object although nothing went wrong, the last error is cleared. */
#ifndef ORV_POINTERS_H
#define ORV_POINTERS_H

#include "OrvActions/OrvInterfaces.h"
#include "OrvActions/OrvTypes.h"

#define ORV_STATUS_OK 0u
#define ORV_STATUS_POINTER 0x80004003u
#define ORV_STATUS_FAIL 0x80004005u

#if defined(__cplusplus)
extern "C" {
#endif

/* By code (ORV_ACTION_...): no object for a code that the catalogue does not know. */
ORV_API TOrvHandle TalvecMatchAct_CreateActionByCode(uint32_t code);
ORV_API ITalvecAction* Talvec_Action_CreateIOrvActionByCode(uint32_t code);
ORV_API ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionByCode(uint32_t code);
ORV_API uint32_t Talvec_Action_CreateIOrvActionPointerByCode(ITalvecAction** object, uint32_t code);
ORV_API uint32_t Talvec_Action_CreateIOrvMatchActionPointerByCode(ITalvecMatchAction** object, uint32_t code);

/* By name in any case, known to the catalogue or not: no object for a null name. */
ORV_API TOrvHandle TalvecMatchAct_CreateActionByName(const OrvWChar* name);
ORV_API ITalvecAction* Talvec_Action_CreateIOrvActionByName(const OrvWChar* name);
ORV_API ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionByName(const OrvWChar* name);
ORV_API uint32_t Talvec_Action_CreateIOrvActionPointerByName(ITalvecAction** object, const OrvWChar* name);
ORV_API uint32_t Talvec_Action_CreateIOrvMatchActionPointerByName(ITalvecMatchAction** object, const OrvWChar* name);

/* From technical text, under the rules of OrvAct_CreateFromTextBufferW. The length counts units; 0 as well as
 * ORV_LENGTH_TERMINATED and above stand for a text up to its terminating zero. No object for a text that yields none or
 * yields another kind of object. */
ORV_API ITalvecAction* Talvec_Action_CreateIOrvActionFromTextBuffer(const OrvWChar* text, uint32_t length);
ORV_API ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionFromTextBuffer(const OrvWChar* text, uint32_t length);
ORV_API ITalvecMessage* Talvec_Action_CreateIOrvMessageFromTextBuffer(const OrvWChar* text, uint32_t length);
ORV_API uint32_t Talvec_Action_CreateIOrvActionPointerFromTextBuffer(ITalvecAction** object, const OrvWChar* text,
                                                                     uint32_t length);
ORV_API uint32_t Talvec_Action_CreateIOrvMatchActionPointerFromTextBuffer(ITalvecMatchAction** object,
                                                                          const OrvWChar* text, uint32_t length);
ORV_API uint32_t Talvec_Action_CreateIOrvMessagePointerFromTextBuffer(ITalvecMessage** object, const OrvWChar* text,
                                                                      uint32_t length);

/* From binary form, under the rules of OrvAct_CreateFromBinBuffer; the size counts bytes. The MatchAction forms take
 * what the buffer holds: a buffer with an action gives an action, whose QueryInterface refuses ITalvecMatchAction. */
ORV_API ITalvecAction* Talvec_Action_CreateIOrvActionFromBinBuffer(const void* data, uint32_t size);
ORV_API ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionFromBinBuffer(const void* data, uint32_t size);
ORV_API ITalvecMessage* Talvec_Action_CreateIOrvMessageFromBinBuffer(const void* data, uint32_t size);
ORV_API uint32_t Talvec_Action_CreateIOrvActionPointerFromBinBuffer(ITalvecAction** object, const void* data,
                                                                    uint32_t size);
ORV_API uint32_t Talvec_Action_CreateIOrvMatchActionPointerFromBinBuffer(ITalvecMatchAction** object, const void* data,
                                                                         uint32_t size);
ORV_API uint32_t Talvec_Action_CreateIOrvMessagePointerFromBinBuffer(ITalvecMessage** object, const void* data,
                                                                     uint32_t size);

/* From an event record, not null, under the rules of OrvAct_RestoreActionFromEventData and its match form. */
ORV_API ITalvecAction* Talvec_Action_CreateIOrvActionFromEventData(const TOrvEventData* record);
ORV_API ITalvecMatchAction* Talvec_Action_CreateIOrvMatchActionFromEventData(const TOrvEventData* record);
ORV_API uint32_t Talvec_Action_CreateIOrvActionPointerFromEventData(ITalvecAction** object,
                                                                    const TOrvEventData* record);
ORV_API uint32_t Talvec_Action_CreateIOrvMatchActionPointerFromEventData(ITalvecMatchAction** object,
                                                                         const TOrvEventData* record);

/* The handle of an interface pointer: takes one reference, which the caller closes. Null gives null. The last error
 * stays as it is. */
ORV_API TOrvHandle Talvec_Action_ConvertFromIOrvMessage(ITalvecMessage* object);
ORV_API TOrvHandle Talvec_Action_ConvertFromIOrvAction(ITalvecAction* object);
ORV_API TOrvHandle Talvec_Action_ConvertFromIOrvMatchAction(ITalvecMatchAction* object);

/* The interface pointer of a handle. No reference moves: a Release through the pointer closes the handle. The object's
 * kind is not checked. The last error stays as it is. */
ORV_API ITalvecMessage* Talvec_Action_ConvertToIOrvMessage(TOrvHandle handle);
ORV_API ITalvecAction* Talvec_Action_ConvertToIOrvAction(TOrvHandle handle);
ORV_API ITalvecMatchAction* Talvec_Action_ConvertToIOrvMatchAction(TOrvHandle handle);

#if defined(__cplusplus)
}
#endif

#endif
