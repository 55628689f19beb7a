#include "OrvActions/OrvText.h"
#include "catalogue/settings.h"
#include "exports/export_twin.h"
#include "exports/frame.h"
#include "forms/plain_text_writer.h"
#include "forms/pruning.h"
#include "forms/technical_text_writer.h"
#include "forms/text_reader.h"
#include "objects/action.h"
#include "ulmo/string_conversion.h"

using namespace OrvPLC;

namespace {

TOrvHandle CreateFromText(std::u16string_view text, std::uint32_t expectedKind, bool narrow, std::uint32_t* consumed)
{
    const TextReadResult read = ReadActionText(text, expectedKind, narrow);
    if (consumed) *consumed = read.consumed;
    return read.object ? HandleOf(read.object) : nullptr;
}

std::u16string WideText(const TOrvMessage& object, OrvBool plain)
{
    return plain ? PlainText(object) : TechnicalText(object);
}

std::string NarrowText(const TOrvMessage& object, OrvBool plain, OrvBool utf8)
{
    const std::u16string text = WideText(object, plain);
    return utf8 ? Ulmo::Utf8FromWide(text) : Ulmo::AnsiFromWide(text);
}

// The action to store and, when it is to be pruned, its copy without the parameters above the limit.
ObjectPtr<TOrvAction> PrunedClone(const TOrvMessage& object, bool prune, std::uint32_t limit)
{
    ObjectPtr<TOrvAction> clone(static_cast<TOrvAction*>(object.Clone()));
    if (prune) PruneParameters(*clone, limit);
    return clone;
}

bool HasEntry(const TOrvMessage& object)
{
    return static_cast<const TOrvAction&>(object).Entry() != nullptr;
}

// The priority forms refuse an action without a catalogue entry outright. That is an answer and no failure, so it
// clears the last error like any other return.
OrvBool Refuse()
{
    LastError::Clear();
    return 0;
}

// The wide forms store the action as it was given: pruning has no effect on them. Deliberate, callers know the
// difference.
OrvBool StorePrunedWide(const TOrvMessage& object, OrvWChar* buffer, std::uint32_t size, OrvBool plain,
                        std::uint32_t* required)
{
    if (!HasEntry(object)) return Refuse();
    return StoreText(buffer, size, required, [&] { return WideText(object, plain); });
}

OrvBool StorePrunedNarrow(const TOrvMessage& object, char* buffer, std::uint32_t size, OrvBool plain, OrvBool utf8,
                          bool prune, std::uint32_t limit, std::uint32_t* required)
{
    if (!HasEntry(object)) return Refuse();
    return StoreText(buffer, size, required,
                     [&] { return NarrowText(*PrunedClone(object, prune, limit), plain, utf8); });
}

}  // namespace

ORV_EXPORT_TWIN(TOrvHandle, CreateFromTextBufferW,
                (const OrvWChar* text, std::uint32_t length, std::uint32_t expectedKind, OrvWord spare,
                 std::uint32_t* consumed),
                (text, length, expectedKind, spare, consumed))
{
    static_cast<void>(spare);
    return Framed<TOrvHandle>(nullptr, [&] {
        const std::u16string_view given =
            length >= ORV_LENGTH_TERMINATED ? TerminatedView(text) : std::u16string_view(Units(text), length);
        return CreateFromText(given, expectedKind, false, consumed);
    });
}

ORV_EXPORT_TWIN(TOrvHandle, CreateFromTextBufferA,
                (const char* text, std::uint32_t length, std::uint32_t expectedKind, OrvBool utf8,
                 std::uint32_t* consumed),
                (text, length, expectedKind, utf8, consumed))
{
    return Framed<TOrvHandle>(nullptr, [&] {
        const std::string_view given =
            length >= ORV_LENGTH_TERMINATED ? std::string_view(text ? text : "") : std::string_view(text, length);
        const std::u16string wide = utf8 ? Ulmo::WideFromUtf8(given) : Ulmo::WideFromAnsi(given);
        return CreateFromText(wide, expectedKind, true, consumed);
    });
}

ORV_EXPORT_TWIN(OrvBool, StoreToTextBufferW,
                (TOrvHandle handle, OrvWChar* buffer, std::uint32_t size, OrvBool plain, OrvWord spare,
                 std::uint32_t* required),
                (handle, buffer, size, plain, spare, required))
{
    static_cast<void>(spare);
    return StoreText(buffer, size, required, [&, &object = ObjectOf(handle)] { return WideText(object, plain); });
}

ORV_EXPORT_TWIN(OrvBool, StoreToTextBufferA,
                (TOrvHandle handle, char* buffer, std::uint32_t size, OrvBool plain, OrvBool utf8,
                 std::uint32_t* required),
                (handle, buffer, size, plain, utf8, required))
{
    return StoreText(buffer, size, required,
                     [&, &object = ObjectOf(handle)] { return NarrowText(object, plain, utf8); });
}

extern "C" OrvBool OrvAct_StoreToTextBufferExW(TOrvHandle handle, OrvWChar* buffer, std::uint32_t size, OrvBool plain,
                                               OrvWord, std::uint8_t, std::uint32_t* required)
{
    return StorePrunedWide(ObjectOf(handle), buffer, size, plain, required);
}

extern "C" OrvBool OrvAct_StoreToTextBufferExA(TOrvHandle handle, char* buffer, std::uint32_t size, OrvBool plain,
                                               OrvBool utf8, std::uint8_t options, std::uint32_t* required)
{
    const bool prune = options & ORV_STORE_APPLY_PRIORITY_LEVEL;
    return StorePrunedNarrow(ObjectOf(handle), buffer, size, plain, utf8, prune, Settings::PriorityLevel, required);
}

extern "C" OrvBool OrvAct_StoreToTextBufWithPriorityLimitW(TOrvHandle handle, OrvWChar* buffer, std::uint32_t size,
                                                           OrvBool plain, OrvWord, std::uint32_t,
                                                           std::uint32_t* required)
{
    return StorePrunedWide(ObjectOf(handle), buffer, size, plain, required);
}

extern "C" OrvBool OrvAct_StoreToTextBufWithPriorityLimitA(TOrvHandle handle, char* buffer, std::uint32_t size,
                                                           OrvBool plain, OrvBool utf8, std::uint32_t limit,
                                                           std::uint32_t* required)
{
    return StorePrunedNarrow(ObjectOf(handle), buffer, size, plain, utf8, true, limit, required);
}
