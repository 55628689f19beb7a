#include "OrvActions/OrvText.h"
#include "catalogue/settings.h"
#include "exports/export_alias.h"
#include "exports/frame.h"
#include "forms/plain_text_writer.h"
#include "forms/pruning.h"
#include "forms/technical_text_writer.h"
#include "forms/text_reader.h"
#include "objects/action.h"
#include "ulmo/string_conversion.h"

using namespace OrvPLC;

namespace {

// The consumed length is stored even if no object comes of the text.
TOrvMessage* ReadText(std::u16string_view text, std::uint32_t expectedKind, bool narrow, std::uint32_t* consumed)
{
    const TextReadResult read = ReadActionText(text, expectedKind, narrow);
    if (consumed) *consumed = read.consumed;
    return read.object;
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

// A copy of the action, without the parameters above the limit if it is to be pruned.
ObjectPtr<TOrvAction> PrunedClone(const TOrvMessage& object, bool prune, std::uint32_t limit)
{
    ObjectPtr<TOrvAction> clone(static_cast<TOrvAction*>(object.Clone()));
    if (prune) PruneParameters(*clone, limit);
    return clone;
}

// For the functions with options or a priority limit, which give false for an action that the catalogue does not know.
// That is an answer and no failure, so it clears the last error like any other return.
template <class Char, class Make>
OrvBool StoreTextOfKnown(TOrvHandle handle, Char* buffer, std::uint32_t size, std::uint32_t* required, Make&& make,
                         const char* function)
{
    return Guarded<OrvBool>(0, [&] {
        const TOrvMessage& object = ObjectOf(handle, function);
        if (static_cast<const TOrvAction&>(object).Entry()) {
            return StoreText(buffer, size, required, [&] { return make(object); });
        }
        LastError::Clear();
        return OrvBool{0};
    });
}

// The wide forms store the action as it was given: pruning has no effect on them. Deliberate, callers know the
// difference.
OrvBool StorePrunedWide(TOrvHandle handle, OrvWChar* buffer, std::uint32_t size, OrvBool plain, std::uint32_t* required,
                        const char* function = ORV_CALLING_FUNCTION)
{
    const auto make = [&](const TOrvMessage& object) { return WideText(object, plain); };
    return StoreTextOfKnown(handle, buffer, size, required, make, function);
}

OrvBool StorePrunedNarrow(TOrvHandle handle, char* buffer, std::uint32_t size, OrvBool plain, OrvBool utf8, bool prune,
                          std::uint32_t limit, std::uint32_t* required, const char* function = ORV_CALLING_FUNCTION)
{
    const auto make = [&](const TOrvMessage& object) {
        return NarrowText(*PrunedClone(object, prune, limit), plain, utf8);
    };
    return StoreTextOfKnown(handle, buffer, size, required, make, function);
}

}  // namespace

TOrvHandle OrvAct_CreateFromTextBufferW(const OrvWChar* text, std::uint32_t length, std::uint32_t expectedKind,
                                        OrvWord spare, std::uint32_t* consumed)
{
    static_cast<void>(spare);
    return NewHandle([&] {
        const std::u16string_view given =
            length >= ORV_LENGTH_TERMINATED ? TerminatedView(text) : std::u16string_view(Units(text), length);
        return ReadText(given, expectedKind, false, consumed);
    });
}
ORV_ALIAS(Talvec_Action_CreateFromTextBufferW, OrvAct_CreateFromTextBufferW);

TOrvHandle OrvAct_CreateFromTextBufferA(const char* text, std::uint32_t length, std::uint32_t expectedKind,
                                        OrvBool utf8, std::uint32_t* consumed)
{
    return NewHandle([&] {
        // A narrow text is widened first; the characters consumed are those of the wide one.
        const std::string_view given =
            length >= ORV_LENGTH_TERMINATED ? std::string_view(text ? text : "") : std::string_view(text, length);
        const std::u16string wide = utf8 ? Ulmo::WideFromUtf8(given) : Ulmo::WideFromAnsi(given);
        return ReadText(wide, expectedKind, true, consumed);
    });
}
ORV_ALIAS(Talvec_Action_CreateFromTextBufferA, OrvAct_CreateFromTextBufferA);

OrvBool OrvAct_StoreToTextBufferW(TOrvHandle handle, OrvWChar* buffer, std::uint32_t size, OrvBool plain, OrvWord spare,
                                  std::uint32_t* required)
{
    static_cast<void>(spare);
    return StoreTextOf(handle, buffer, size, required,
                       [&](const TOrvMessage& object) { return WideText(object, plain); });
}
ORV_ALIAS(Talvec_Action_StoreToTextBufferW, OrvAct_StoreToTextBufferW);

OrvBool OrvAct_StoreToTextBufferA(TOrvHandle handle, char* buffer, std::uint32_t size, OrvBool plain, OrvBool utf8,
                                  std::uint32_t* required)
{
    return StoreTextOf(handle, buffer, size, required,
                       [&](const TOrvMessage& object) { return NarrowText(object, plain, utf8); });
}
ORV_ALIAS(Talvec_Action_StoreToTextBufferA, OrvAct_StoreToTextBufferA);

OrvBool OrvAct_StoreToTextBufferExW(TOrvHandle handle, OrvWChar* buffer, std::uint32_t size, OrvBool plain, OrvWord,
                                    std::uint8_t, std::uint32_t* required)
{
    return StorePrunedWide(handle, buffer, size, plain, required);
}

OrvBool OrvAct_StoreToTextBufferExA(TOrvHandle handle, char* buffer, std::uint32_t size, OrvBool plain, OrvBool utf8,
                                    std::uint8_t options, std::uint32_t* required)
{
    const bool prune = options & ORV_STORE_APPLY_PRIORITY_LEVEL;
    return StorePrunedNarrow(handle, buffer, size, plain, utf8, prune, Settings::PriorityLevel, required);
}

OrvBool OrvAct_StoreToTextBufWithPriorityLimitW(TOrvHandle handle, OrvWChar* buffer, std::uint32_t size, OrvBool plain,
                                                OrvWord, std::uint32_t, std::uint32_t* required)
{
    return StorePrunedWide(handle, buffer, size, plain, required);
}

OrvBool OrvAct_StoreToTextBufWithPriorityLimitA(TOrvHandle handle, char* buffer, std::uint32_t size, OrvBool plain,
                                                OrvBool utf8, std::uint32_t limit, std::uint32_t* required)
{
    return StorePrunedNarrow(handle, buffer, size, plain, utf8, true, limit, required);
}
