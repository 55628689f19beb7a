// The kinds that are texts, dates and GUIDs.
#include "platform/calendar.h"
#include "ulmo/date_time.h"
#include "ulmo/guid_tools.h"
#include "ulmo/string_conversion.h"
#include "ulmo/variant_families.h"

namespace Ulmo {

namespace {

using namespace VariantFamilies;

struct NarrowText : TextValue<std::string> {
    static std::string ToString(const void* value) { return At<std::string>(value); }
    static void FromString(void* value, std::string_view text) { At<std::string>(value) = text; }
};

struct WideText : TextValue<std::u16string> {
    static std::string ToString(const void* value) { return Utf8FromWide(At<std::u16string>(value)); }
    static void FromString(void* value, std::string_view text) { At<std::u16string>(value) = WideFromUtf8(text); }
};

std::string FileTimeText(const void* value)
{
    Platform::SystemTime time;
    if (!Platform::FileTimeToSystemTime(At<TFileTime>(value).ticks, time)) {
        ThrowLastError(u"Ulmo::FileTimeToSystemTime");
    }
    // The technical form is ASCII, so it needs no conversion.
    char text[kDateTextCapacity];
    return {text, SystemTimeToStr(text, time, dtsmTechnical)};
}

// Without a bias in either direction: the time is UTC.
struct FileTime : PlainValue<TFileTime> {
    static std::string ToString(const void* value) { return Guarded<FileTimeText>(value); }
    static void FromString(void* value, std::string_view text)
    {
        TFileTime time{};
        if (!Platform::SystemTimeToFileTime(StrToSystemTime(text), time.ticks)) {
            ThrowLastError(u"Ulmo::SystemTimeToFileTime");
        }
        At<TFileTime>(value) = time;
    }
};

std::string DateTimeText(const void* value)
{
    DateText text;
    return Utf8FromWide(ToText(At<TUlmoDateTime>(value), text));
}

struct DateTime : PlainValue<TUlmoDateTime> {
    static std::string ToString(const void* value) { return Guarded<DateTimeText>(value); }
    static void FromString(void* value, std::string_view text) { At<TUlmoDateTime>(value) = FromText(text); }
};

std::string GuidText(const void* value)
{
    return GuidTools::GuidToStringA(At<TOrvGuid>(value));
}

struct Guid : PlainValue<TOrvGuid> {
    static std::string ToString(const void* value) { return Guarded<GuidText>(value); }
    static void FromString(void* value, std::string_view text)
    {
        if (!GuidTools::StringToGuidA(text, At<TOrvGuid>(value))) throw GuidConversionException(text);
    }
};

}  // namespace

ORV_VARIANT_KIND(NarrowText)
ORV_VARIANT_KIND(WideText)
ORV_VARIANT_KIND(FileTime)
ORV_VARIANT_KIND(DateTime)
ORV_VARIANT_KIND(Guid)

}  // namespace Ulmo
