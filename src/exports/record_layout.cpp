// The layout of the records that callers share, on the 64-bit platforms: order and widths are part of the binary
// contract, so a change that moves a field does not compile.
#include <cstddef>

#include "OrvActions/OrvCatalogue.h"

#define ORV_AT(record, field, offset) static_assert(offsetof(record, field) == (offset))

// The pointers from NameA on: names, what stands between, plain names.
#define ORV_NAMES_AT(record, names, plainNames)   \
    ORV_AT(record, NameA, names);                 \
    ORV_AT(record, NameW, (names) + 8);           \
    ORV_AT(record, PlainNameA, plainNames);       \
    ORV_AT(record, PlainNameU, (plainNames) + 8); \
    ORV_AT(record, PlainNameW, (plainNames) + 16)
#define ORV_DESCRIPTIONS_AT(record, offset)      \
    ORV_AT(record, DescriptionA, offset);        \
    ORV_AT(record, DescriptionU, (offset) + 8);  \
    ORV_AT(record, DescriptionW, (offset) + 16); \
    static_assert(sizeof(record) == (offset) + 24)

ORV_AT(TOrvActionClassPlainInfo, Code, 0);
ORV_AT(TOrvActionClassPlainInfo, Reserved, 24);
ORV_NAMES_AT(TOrvActionClassPlainInfo, 8, 32);
ORV_DESCRIPTIONS_AT(TOrvActionClassPlainInfo, 56);

ORV_AT(TOrvActionPlainInfo, ClassCode, 0);
ORV_AT(TOrvActionPlainInfo, Code, 4);
ORV_AT(TOrvActionPlainInfo, Flags, 8);
ORV_AT(TOrvActionPlainInfo, ParameterCount, 12);
ORV_NAMES_AT(TOrvActionPlainInfo, 16, 32);
ORV_DESCRIPTIONS_AT(TOrvActionPlainInfo, 56);

ORV_AT(TOrvParameterPlainInfo, Type, 0);
ORV_AT(TOrvParameterPlainInfo, View, 4);
ORV_AT(TOrvParameterPlainInfo, Reserved, 8);
ORV_NAMES_AT(TOrvParameterPlainInfo, 16, 32);
ORV_DESCRIPTIONS_AT(TOrvParameterPlainInfo, 56);

ORV_AT(TOrvEnumValuePlainInfo, Type, 0);
ORV_AT(TOrvEnumValuePlainInfo, Value, 4);
ORV_NAMES_AT(TOrvEnumValuePlainInfo, 8, 24);
ORV_AT(TOrvEnumValuePlainInfo, Reserved, 48);
static_assert(sizeof(TOrvEnumValuePlainInfo) == 56);

ORV_AT(TTalvecActionClassPlainInfo, Code, 0);
ORV_AT(TTalvecActionClassPlainInfo, Priority, 4);
ORV_AT(TTalvecActionClassPlainInfo, Flags, 8);
ORV_AT(TTalvecActionClassPlainInfo, Reserved, 32);
ORV_NAMES_AT(TTalvecActionClassPlainInfo, 16, 40);
ORV_DESCRIPTIONS_AT(TTalvecActionClassPlainInfo, 64);

ORV_AT(TTalvecActionPlainInfo, ClassCode, 0);
ORV_AT(TTalvecActionPlainInfo, Code, 4);
ORV_AT(TTalvecActionPlainInfo, Priority, 8);
ORV_AT(TTalvecActionPlainInfo, Flags, 12);
ORV_AT(TTalvecActionPlainInfo, Reserved, 16);
ORV_AT(TTalvecActionPlainInfo, ParameterCount, 20);
ORV_NAMES_AT(TTalvecActionPlainInfo, 24, 40);
ORV_DESCRIPTIONS_AT(TTalvecActionPlainInfo, 64);

ORV_AT(TTalvecParameterPlainInfo, Type, 0);
ORV_AT(TTalvecParameterPlainInfo, View, 4);
ORV_AT(TTalvecParameterPlainInfo, Priority, 8);
ORV_AT(TTalvecParameterPlainInfo, EnumType, 12);
ORV_AT(TTalvecParameterPlainInfo, DbField, 16);
ORV_NAMES_AT(TTalvecParameterPlainInfo, 24, 40);
ORV_DESCRIPTIONS_AT(TTalvecParameterPlainInfo, 64);

ORV_AT(TTalvecEnumValuePlainInfo, EnumId, 0);
ORV_AT(TTalvecEnumValuePlainInfo, Value, 4);
ORV_NAMES_AT(TTalvecEnumValuePlainInfo, 8, 24);
ORV_DESCRIPTIONS_AT(TTalvecEnumValuePlainInfo, 48);
