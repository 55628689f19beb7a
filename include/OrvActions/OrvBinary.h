/* The binary form: how actions travel between processes and ride inside event records. Part of OrvActions.h.
 *
 * Little-endian and self-describing: every field carries its name and kind, so a reader with another catalogue keeps
 * what it does not know. docs/binary-form.md shows it byte by byte. */
#ifndef ORV_BINARY_H
#define ORV_BINARY_H

#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* Both families. Stores the binary form of an action.
 *   buffer    may be null, which measures
 *   size      in bytes; a size above 0x7FFFFFFF counts as 0
 *   required  out, may be null: the length of the form in bytes, whether it fits or not
 * Unlike the text stores, a buffer that is too small receives every field that fits whole; the call still fails, with
 * the last error "buffer too small". */
ORV_API OrvBool OrvAct_StoreToBinBuffer(TOrvHandle handle, void* buffer, uint32_t size, uint32_t* required);
ORV_API OrvBool Talvec_Action_StoreToBinBuffer(TOrvHandle handle, void* buffer, uint32_t size, uint32_t* required);

/* Both families. Reads one action or match action from its binary form.
 *   data          any alignment; null is an empty buffer
 *   size          in bytes; more may follow the action, so buffers can stand end to end
 *   expectedKind  what may be built: ORV_EXPECT_ANY or 0x7FFFFFFF both, 1 or 3 actions only, 2 or 4 match actions only,
 *                 anything else nothing
 *   consumed      out, may be null: the bytes read
 * The result is a new handle that the caller closes, or null, without a last error, for a buffer of another kind.
 *
 * A buffer that ends too early is no failure and clears the last error: the result holds the parameters that were read
 * whole, and consumed is an error instead of a position. It is the number of bytes that were left where the next field
 * did not fit, or 0xFFFFFFFF if the buffer ended exactly between two fields. If only the last field is missing, that
 * one is empty and consumed is size + 1. So compare consumed with the size.
 *
 * The kinds 1 and 2 tag buffers of the sibling product, which its library turns into text. That text is read like one
 * of OrvAct_CreateFromTextBufferW, with the same failures, and consumed counts its units. */
ORV_API TOrvHandle OrvAct_CreateFromBinBuffer(const void* data, uint32_t size, uint32_t expectedKind,
                                              uint32_t* consumed);
ORV_API TOrvHandle Talvec_Action_CreateFromBinBuffer(const void* data, uint32_t size, uint32_t expectedKind,
                                                     uint32_t* consumed);

#if defined(__cplusplus)
}
#endif

#endif
