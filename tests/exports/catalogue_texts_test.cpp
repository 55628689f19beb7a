// Writing display texts: every function that writes them, with pointers that earlier queries gave.
#include <OrvActions.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

struct TextPointers {
    const char *plainA, *plainU;
    const OrvWChar *plain, *description;
};

// One function that writes texts, with the query of the same entry.
struct Target {
    const char* what;
    TextPointers (*get)();
    OrvBool (*set)(const OrvWChar* plain, const OrvWChar* description);
};

template <class Record>
TextPointers Pointers(const Record& record)
{
    TextPointers texts{record.PlainNameA, record.PlainNameU, record.PlainNameW, nullptr};
    if constexpr (requires { record.DescriptionW; }) {
        texts.description = record.DescriptionW;
    } else {
        TTalvecEnumValuePlainInfo same{};
        EXPECT_TRUE(Talvec_Action_GetEnumValueInfo(&same, ORV_ENUM_KIND_ALL, ORV_ENUM_PlcClientType, record.Value));
        texts.description = same.DescriptionW;
    }
    return texts;
}

template <class Record>
void SetTexts(Record& record, const OrvWChar* plain, const OrvWChar* description)
{
    record.PlainNameW = plain;
    if constexpr (requires { record.Value; }) {
        record.NameW = description;  // of an enum value it comes in the field of the name
    } else {
        record.DescriptionW = description;
    }
}

#define TARGET(Record, Getter, Key, Setter, ...)                            \
    Target                                                                  \
    {                                                                       \
#Setter,                                                                   \
            [] {                                                            \
                Record record{};                                            \
                EXPECT_TRUE(Getter Key);                                    \
                return Pointers(record);                                    \
            },                                                              \
            [](const OrvWChar* plain, const OrvWChar* description) {        \
                Record record{};                                            \
                EXPECT_TRUE(Getter Key);                                    \
                SetTexts(record, plain, description);                       \
                return Setter(&record __VA_OPT__(, ) __VA_ARGS__);          \
            }                                                               \
    }
#define TARGETS(Name, Record, GetKey, ...)                                                                  \
    TARGET(TOrv##Record, OrvAct_Get##Name##Info, GetKey, OrvAct_Set##Name##PlainInfo __VA_OPT__(, ) __VA_ARGS__), \
        TARGET(TTalvec##Record, Talvec_Action_Get##Name##Info, GetKey,                                        \
               Talvec_Action_Set##Name##PlainInfo __VA_OPT__(, ) __VA_ARGS__)

const Target kTargets[] = {
    TARGETS(ActionClass, ActionClassPlainInfo, (&record, ORV_CLASS_CameraControl)),
    TARGETS(Action, ActionPlainInfo, (&record, ORV_ACTION_PanLeft)),
    TARGETS(ActionParameter, ParameterPlainInfo, (&record, ORV_ACTION_PanLeft, 1), ORV_ACTION_PanLeft, 1),
    TARGETS(MatchActionDescription, ParameterPlainInfo, (&record)),
    TARGETS(EventDescription, ActionPlainInfo, (&record)),
    TARGETS(EventField, ParameterPlainInfo, (&record, 3), 3),
    TARGET(TOrvEnumValuePlainInfo, OrvAct_GetEnumValueInfo, (&record, 50, 1), OrvAct_SetEnumValuePlainInfo),
    TARGET(TTalvecEnumValuePlainInfo, Talvec_Action_GetEnumValueInfo,
           (&record, ORV_ENUM_KIND_ALL, ORV_ENUM_PlcClientType, 1), Talvec_Action_SetEnumValuePlainInfo),
    TARGET(TTalvecParameterPlainInfo, Talvec_Action_GetActionParameterInfo, (&record, ORV_GENERAL_PARAMETERS, 2),
           Talvec_Action_SetActionParameterPlainInfo, ORV_GENERAL_PARAMETERS, 0),
};

// Writes back what a test writes over.
class KeptTexts {
public:
    explicit KeptTexts(const Target& target)
        : target_(target), plain_(Text(target.get().plain)), description_(Text(target.get().description))
    {}
    KeptTexts(const KeptTexts&) = delete;
    KeptTexts& operator=(const KeptTexts&) = delete;
    ~KeptTexts() { EXPECT_TRUE(target_.set(W(plain_.c_str()), W(description_.c_str()))); }

private:
    const Target& target_;
    std::u16string plain_;
    std::u16string description_;
};

TEST(CatalogueTexts, OfOneEntrySwapPlaces)
{
    for (const Target& target : kTargets) {
        SCOPED_TRACE(target.what);
        const KeptTexts kept(target);
        EXPECT_TRUE(target.set(W(u"a plain name with an \u00e4"), W(u"and a description that is longer than it")));
        const TextPointers own = target.get();
        EXPECT_TRUE(target.set(own.description, own.plain));
        const TextPointers swapped = target.get();
        EXPECT_EQ(Text(swapped.plain), u"and a description that is longer than it");
        EXPECT_STREQ(swapped.plainA, "and a description that is longer than it");
        EXPECT_STREQ(swapped.plainU, "and a description that is longer than it");
        EXPECT_EQ(Text(swapped.description), u"a plain name with an \u00e4");
    }
}

// What fits is written in place: pointers from before read the new text. What does not leaves them sound.
TEST(CatalogueTexts, MoveOnlyForMoreRoom)
{
    std::u16string longer(40, u'x');
    for (const Target& target : kTargets) {
        SCOPED_TRACE(target.what);
        const KeptTexts kept(target);
        EXPECT_TRUE(target.set(W(u"0123456789"), W(u"")));
        const TextPointers first = target.get();
        EXPECT_TRUE(target.set(W(u"9876543210"), W(u"")));
        EXPECT_EQ(Text(first.plain), u"9876543210");
        EXPECT_TRUE(target.set(W(u"\u00fc"), W(u"")));
        EXPECT_EQ(Text(first.plain), u"\u00fc");
        EXPECT_STREQ(first.plainU, "\xC3\xBC");
        EXPECT_EQ(target.get().plain, first.plain);
        EXPECT_EQ(target.get().plainA, first.plainA);
        longer += longer;  // the functions of both families write to the same room
        EXPECT_TRUE(target.set(W(longer.c_str()), W(u"")));
        EXPECT_EQ(Text(first.plain), u"\u00fc");
        EXPECT_EQ(Text(target.get().plain), longer);
    }
}

// Two threads: one writes two texts in turns, the other stores objects of its own and never sees a mixture.
TEST(CatalogueTexts, AreWholeForOtherThreads)
{
    const Target& target = kTargets[2];
    const KeptTexts kept(target);
    const std::u16string texts[] = {std::u16string(2000, u'a'), std::u16string(1500, u'b')};
    ASSERT_TRUE(target.set(W(texts[0].c_str()), W(u"")));
    const Handle handle = Read(u"PanLeft ()");
    std::atomic<bool> done = false;
    std::thread writer([&] {
        for (int i = 0; !done; ++i) target.set(W(texts[i % 2].c_str()), W(u""));
    });
    int mixtures = 0;
    for (int i = 0; i < 5000; ++i) {
        OrvWChar buffer[2100];
        EXPECT_TRUE(OrvAct_StoreToTextBufferW(handle.get(), buffer, 2100, 1, 0, nullptr));
        const std::u16string text = Text(buffer);
        if (text != texts[0] + u";" && text != texts[1] + u";") ++mixtures;
    }
    done = true;
    writer.join();
    EXPECT_EQ(mixtures, 0);
}

}  // namespace
