/* Action text: the language of configuration and logs. Part of OrvActions.h.
 *
 * Technical text, Name (Parameter: value, ...), can be read back. Plain text is for people, with plain names and enum
 * values as words, and cannot be read back. */
#ifndef ORV_TEXT_H
#define ORV_TEXT_H

#include "OrvActions/OrvTypes.h"

#if defined(__cplusplus)
extern "C" {
#endif

/* Option of the ..Ex stores: leave out parameters whose priority exceeds the process-wide priority level. */
enum { ORV_STORE_APPLY_PRIORITY_LEVEL = 1 };

/* Both families. Reads one action or match action from technical text.
 *   text          not null; need not end in a zero when a length is given
 *   length        in units, or ORV_LENGTH_TERMINATED and above for a text up to its terminating zero
 *   expectedKind  what may be built: ORV_EXPECT_ANY or 0x7FFFFFFF both, 1 or 3 actions only, 2 or 4 match actions only,
 *                 anything else nothing
 *   spare         not read
 *   consumed      out, may be null: how many units were read. Parameters are searched, not parsed, so give one action a
 *                 text: a second action in the same text would lend the first one its parameters
 * The result is a new handle that the caller closes, or null. A text that yields no action gives null without a last
 * error. A bad guid or an impossible date in a string of that form, and more markup of one kind than can be told apart
 * in sensible time, give null with a last error. */
ORV_API TOrvHandle OrvAct_CreateFromTextBufferW(const OrvWChar* text, uint32_t length, uint32_t expectedKind,
                                                OrvWord spare, uint32_t* consumed);
ORV_API TOrvHandle Talvec_Action_CreateFromTextBufferW(const OrvWChar* text, uint32_t length, uint32_t expectedKind,
                                                       OrvWord spare, uint32_t* consumed);

/* Both families. The same from narrow text, UTF-8 or in the ANSI code page. The length counts bytes; consumed counts
 * the 16-bit units of the widened text. */
ORV_API TOrvHandle OrvAct_CreateFromTextBufferA(const char* text, uint32_t length, uint32_t expectedKind, OrvBool utf8,
                                                uint32_t* consumed);
ORV_API TOrvHandle Talvec_Action_CreateFromTextBufferA(const char* text, uint32_t length, uint32_t expectedKind,
                                                       OrvBool utf8, uint32_t* consumed);

/* Both families. Stores the plain text or the technical text of an action.
 *   plain  true for plain text
 *   spare  not read
 *   utf8   true for UTF-8, false for the ANSI code page, in which a character may have no counterpart
 * Plain text leaves out parameters whose priority exceeds the process-wide priority level, technical text none. A date
 * whose local time lies before 1601 has no text and fails the call. */
ORV_API OrvBool OrvAct_StoreToTextBufferW(TOrvHandle handle, OrvWChar* buffer, uint32_t size, OrvBool plain,
                                          OrvWord spare, uint32_t* required);
ORV_API OrvBool Talvec_Action_StoreToTextBufferW(TOrvHandle handle, OrvWChar* buffer, uint32_t size, OrvBool plain,
                                                 OrvWord spare, uint32_t* required);
ORV_API OrvBool OrvAct_StoreToTextBufferA(TOrvHandle handle, char* buffer, uint32_t size, OrvBool plain, OrvBool utf8,
                                          uint32_t* required);
ORV_API OrvBool Talvec_Action_StoreToTextBufferA(TOrvHandle handle, char* buffer, uint32_t size, OrvBool plain,
                                                 OrvBool utf8, uint32_t* required);

/* The same with options (ORV_STORE_...). An action that the catalogue does not know is refused: false, with the last
 * error cleared and the required size untouched. Only the narrow form leaves parameters out of technical text; the
 * wide form ignores the options. */
ORV_API OrvBool OrvAct_StoreToTextBufferExW(TOrvHandle handle, OrvWChar* buffer, uint32_t size, OrvBool plain,
                                            OrvWord spare, uint8_t options, uint32_t* required);
ORV_API OrvBool OrvAct_StoreToTextBufferExA(TOrvHandle handle, char* buffer, uint32_t size, OrvBool plain, OrvBool utf8,
                                            uint8_t options, uint32_t* required);

/* The same with a limit in place of options: parameters whose priority exceeds it are left out, by the narrow form
 * only. */
ORV_API OrvBool OrvAct_StoreToTextBufWithPriorityLimitW(TOrvHandle handle, OrvWChar* buffer, uint32_t size,
                                                        OrvBool plain, OrvWord spare, uint32_t limit,
                                                        uint32_t* required);
ORV_API OrvBool OrvAct_StoreToTextBufWithPriorityLimitA(TOrvHandle handle, char* buffer, uint32_t size, OrvBool plain,
                                                        OrvBool utf8, uint32_t limit, uint32_t* required);

/* Converts one action of the older sibling product's text, Name (field, field, Key: value), to technical text.
 * docs/sibling-text.md lists what converts and what is lost; neither direction needs the sibling's library.
 *   text       zero-ended, not a match action; null reads as ""
 *   converted  out, may be null: a system string that the caller frees; left alone on failure
 * False, with the code ORV_ERROR and the sub-code ORV_SUBERROR_NO_COUNTERPART ("Action doesn't exist in ORV"), for a
 * text that is no action or whose action this library lacks. A field that should be a date and is not fails with the
 * date's own error. */
ORV_API OrvBool Talvec_Action_ConvertHeskActionTextToOrvActionText(const OrvWChar* text, OrvBStr* converted);

/* The other way, for technical text of an action that the sibling product has. Arguments as above.
 * False, with the code ORV_ERROR and the sub-code ORV_SUBERROR_NO_COUNTERPART ("Action doesn't exist in HESK"), for a
 * text that does not read as an action and for an action that the sibling lacks. */
ORV_API OrvBool Talvec_Action_ConvertOrvActionTextToHeskActionText(const OrvWChar* text, OrvBStr* converted);

#if defined(__cplusplus)
}
#endif

#endif
