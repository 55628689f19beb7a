/* The plain types of the OrvActions interface: scalars, records and constants. Part of OrvActions.h; include that.
 *
 * Every record has the natural alignment of the platform and the layout of the Microsoft compiler. Pointers to text
 * inside a record are borrowed unless its comment says otherwise, and every text ends in a zero unit. */
#ifndef ORV_TYPES_H
#define ORV_TYPES_H

#include <stddef.h>
#include <stdint.h>

/* The UTF-16 unit. On Windows it is wchar_t, so that callers write L"..."; elsewhere char16_t, for u"...". */
#if defined(_WIN32)
#include <wchar.h>
typedef wchar_t OrvWChar;
#else
#if !defined(__cplusplus)
#include <uchar.h>
#endif
typedef char16_t OrvWChar;
#endif

/* Declares an exported function. */
#if defined(__GNUC__) && !defined(_WIN32)
#define ORV_API __attribute__((visibility("default")))
#else
#define ORV_API
#endif

#if defined(__cplusplus)
extern "C" {
#endif

/* A truth value of 8 bits. The library writes 0 or 1 and takes any non-zero byte as true. */
typedef uint8_t OrvBool;

/* A word of the caller's that a callback gets back, or an argument that nothing reads. */
typedef uintptr_t OrvWord;

/* A system string: a 32-bit length in bytes, the 16-bit units that the pointer leads to, and a zero unit. Made by
 * SysAllocString and its kin; whoever receives one owns it and frees it with SysFreeString. Null stands for the empty
 * string. */
typedef OrvWChar* OrvBStr;

/* One action. A handle is the primary interface pointer of the object and owns one reference to it. */
typedef struct OrvActionObject* TOrvHandle;

/* 16 bytes in the memory order of a GUID. */
#if defined(GUID_DEFINED)
typedef GUID TOrvGuid;
#else
typedef struct TOrvGuid {
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
} TOrvGuid;
#endif

/* An instant and the zone in which it was taken, in one word. Bits 0 to 47: milliseconds since 1601-01-01 UTC.
 * Bits 48 to 63: signed bias in minutes, UTC = local + bias; one hour east of Greenwich is -60. */
typedef struct TUlmoDateTime {
    uint64_t value;
} TUlmoDateTime;

/* A media channel: a camera, an output, a contact. */
typedef struct TOrvChannelValue {
    uint64_t id;
    const OrvWChar* name; /* null reads as "" */
    uint32_t number;
} TOrvChannelValue;

typedef struct TOrvEventTypeValue {
    uint64_t id;
    const OrvWChar* name; /* null reads as "" */
    uint64_t reserved;
} TOrvEventTypeValue;

typedef struct TOrvResourceValue {
    TOrvGuid guid;
    const OrvWChar* name; /* null reads as "" */
} TOrvResourceValue;

/* One item of a result data set. The name belongs to whoever made the item: the library copies what it is given, and
 * items that it hands out are freed with their value. */
typedef struct TOrvResultDataItem {
    uint16_t field0;
    uint16_t field1;
    int16_t field2;
    int16_t field3;
    int32_t field4;
    OrvBStr name; /* or null */
} TOrvResultDataItem;

/* The items stay valid until the next read of the same value or the end of the object. */
typedef struct TOrvResultDataList {
    const TOrvResultDataItem* items;
    uint64_t count;
} TOrvResultDataList;

/* A parameter value of any kind. The kind decides which member of the payload counts; the kinds String and
 * ResultDataSet use the text after it instead. */
typedef struct TOrvParameterValue {
    uint32_t kind;      /* ORV_KIND_..., 0 for none */
    uint32_t enum_type; /* identifier of the value's enum, 0 for none */
    union {
        OrvBool boolean;
        int32_t int32;
        int64_t int64; /* also Rect: four signed 16-bit coordinates, top lowest, then left, bottom, right */
        double real;
        TUlmoDateTime dateTime;
        TOrvGuid guid;
        struct {
            uint64_t id;
            const OrvWChar* name;
        } eventType;
        TOrvChannelValue channel;
        TOrvResourceValue resource;
        uint8_t bytes[32];
    } payload;
    OrvBStr text; /* owned by the record: the caller frees the last one */
} TOrvParameterValue;

/* The last failure of the calling thread. The texts are never null, belong to the thread and stay valid until its next
 * call that fails; long ones are cut. */
typedef struct TOrvLastErrorInfo {
    uint32_t code;            /* ORV_ERROR, a code of the system, a date error 1 to 14, or 0 */
    uint32_t subCode;         /* ORV_SUBERROR_..., 5 for a date error, else 0 */
    const char* className;    /* of the exception inside the library */
    const char* message;      /* in the ANSI code page */
    const OrvWChar* messageW; /* the same in UTF-16 */
    const char* details;      /* for a developer; often "" */
} TOrvLastErrorInfo;

/* Message kinds. 1 and 2 tag buffers of the sibling product and are never the kind of an object. */
enum {
    ORV_MESSAGE_SIBLING_ACTION = 1,
    ORV_MESSAGE_SIBLING_MATCH_ACTION = 2,
    ORV_MESSAGE_ACTION = 3,
    ORV_MESSAGE_MATCH_ACTION = 4
};

/* The expected kind of a text or buffer that may hold an action or a match action. */
#define ORV_EXPECT_ANY 0u

/* A text length that means "up to the terminating zero". */
#define ORV_LENGTH_TERMINATED 0x7FFFFFFFu

/* The kinds of values. The type of a parameter in the catalogue is the kind that it declares. X(name, number) */
#define ORV_FOR_EACH_KIND(X) \
    X(Boolean, 1)            \
    X(Numeric32Bit, 2)       \
    X(Numeric64Bit, 3)       \
    X(NumericDouble, 4)      \
    X(String, 5)             \
    X(DateTime, 6)           \
    X(Guid, 7)               \
    X(EventType, 8)          \
    X(MediaChannel, 9)       \
    X(Resource, 10)          \
    X(Rect, 11)              \
    X(ResultDataSet, 12)

/* Views: what a parameter designates, not how it is stored. A name is looked up in this order, which is not quite that
 * of the numbers: see ABSource. X(name, number) */
#define ORV_FOR_EACH_VIEW(X)   \
    X(Unavailable, 0)          \
    X(UserName, 1)             \
    X(DeviceType, 2)           \
    X(DeviceName, 3)           \
    X(VideoInput, 4)           \
    X(VideoOutput, 5)          \
    X(InputContact, 6)         \
    X(OutputContact, 7)        \
    X(PTZHead, 8)              \
    X(TimeRange, 9)            \
    X(Event, 10)               \
    X(AudioInput, 11)          \
    X(AudioOutput, 12)         \
    X(ADParameterSet, 13)      \
    X(VMDParameterSet, 14)     \
    X(WindowsError, 15)        \
    X(DeviceSubType, 16)       \
    X(ForeignKey, 17)          \
    X(SVParameterSet, 18)      \
    X(ObtrackParameterSet, 19) \
    X(ABDestination, 20)       \
    X(ABSchedule, 21)          \
    X(ABSource, 26)            \
    X(HardwareModule, 22)      \
    X(CameraProfile, 23)       \
    X(VantikParameterSet, 24)  \
    X(ImexDestination, 25)     \
    X(AILogicRule, 27)

/* Columns of the event record that a parameter fills, as bits of a mask. These names, such as Int32_A, are those of the
 * catalogue and of extension files; the same column is called Int32FieldA in the event database and as the name of a
 * parameter. X(name, bit) */
#define ORV_FOR_EACH_COLUMN(X) \
    X(Int32_A, 0x1)            \
    X(Int32_B, 0x2)            \
    X(Int32_C, 0x4)            \
    X(Int32_D, 0x8)            \
    X(Int64_A, 0x10)           \
    X(Int64_B, 0x20)           \
    X(Int64_C, 0x40)           \
    X(Int64_D, 0x80)           \
    X(String_A, 0x100)         \
    X(String_B, 0x200)         \
    X(String_C, 0x400)         \
    X(String_D, 0x800)         \
    X(Double_A, 0x1000)        \
    X(Double_B, 0x2000)        \
    X(Time_A, 0x4000)          \
    X(Time_B, 0x8000)          \
    X(FirstUser, 0x10000)      \
    X(SecondUser, 0x20000)     \
    X(WindowsHost, 0x40000)    \
    X(WindowsUser, 0x80000)

#define ORV_KIND_CONSTANT(name, number) ORV_KIND_##name = number,
#define ORV_VIEW_CONSTANT(name, number) ORV_VIEW_##name = number,
#define ORV_COLUMN_CONSTANT(name, bit) ORV_COLUMN_##name = bit,
enum { ORV_FOR_EACH_KIND(ORV_KIND_CONSTANT) ORV_KIND_None = 0 };
enum { ORV_FOR_EACH_VIEW(ORV_VIEW_CONSTANT) ORV_VIEW_Last = 27 };
enum { ORV_FOR_EACH_COLUMN(ORV_COLUMN_CONSTANT) ORV_COLUMN_None = 0 };
#undef ORV_KIND_CONSTANT
#undef ORV_VIEW_CONSTANT
#undef ORV_COLUMN_CONSTANT

#if defined(__cplusplus)
} /* extern "C" */
#endif

#endif
