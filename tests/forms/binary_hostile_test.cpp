// Binary forms that end anywhere, that are changed anywhere and that lie about their lengths.
#include <gtest/gtest.h>

#include "catalogue/catalogue.h"
#include "forms/binary_form.h"
#include "forms/describe.h"
#include "forms/sample_action.h"

namespace OrvPLC {
namespace {

constexpr std::uint32_t kBetweenFields = 0xFFFFFFFF;

// One step of the reader through a form.
struct Field {
    std::size_t start;
    std::size_t end;
    std::size_t recordsBefore;  // that are whole and come before the field
    bool isCount;               // of units or of records
    bool endsRecord;            // nothing else of the record is read when this field fails
    bool endsAll;               // nothing else at all is read then
};

// The steps through the form of an action, from the layout of the form and not from the code that writes it.
class FieldList {
public:
    explicit FieldList(const TOrvAction& action)
    {
        Add(4);
        AddText(action.Name(), false);
        Add(4, true);
        fields_.back().endsAll = true;
        action.Parameters().ForEachByKey([this](std::u16string_view, std::u16string_view name,
                                                const TOrvParameter& value, std::size_t) { AddRecord(name, value); });
        if (records_ == 0) return;
        fields_.back().endsAll = true;
        if (lastTextAtEnd_) fields_[fields_.size() - 2].endsAll = true;
    }
    const std::vector<Field>& Get() const { return fields_; }

private:
    void Add(std::size_t size, bool isCount = false)
    {
        const std::size_t start = fields_.empty() ? 0 : fields_.back().end;
        fields_.push_back({start, start + size, records_, isCount, false, false});
    }
    void AddText(std::u16string_view text, bool endsRecord)
    {
        Add(4, true);
        fields_.back().endsRecord = endsRecord;
        Add(2 * (text.size() + 1));
        fields_.back().endsRecord = endsRecord;
    }
    void AddRecord(std::u16string_view name, const TOrvParameter& value)
    {
        AddText(name, false);
        Add(4);
        Add(4);
        const std::uint32_t kind = value.Kind();
        lastTextAtEnd_ = kind == ORV_KIND_String || kind == ORV_KIND_ResultDataSet;
        const bool named = kind == ORV_KIND_EventType || kind == ORV_KIND_MediaChannel || kind == ORV_KIND_Resource;
        if (lastTextAtEnd_ || named) AddText(value.Wide(), lastTextAtEnd_);
        if (kind == ORV_KIND_MediaChannel) Add(8);
        if (kind == ORV_KIND_Boolean || kind == ORV_KIND_Numeric32Bit || kind == ORV_KIND_MediaChannel) {
            Add(4);
        } else if (kind == ORV_KIND_Guid || kind == ORV_KIND_Resource) {
            Add(16);
        } else if (!lastTextAtEnd_) {
            Add(8);
        }
        fields_.back().endsRecord = true;
        ++records_;
    }

    std::vector<Field> fields_;
    std::size_t records_ = 0;
    bool lastTextAtEnd_ = false;
};

// The values that arrived are those of the original; at most the last one was cut to nothing.
void ExpectSameValues(const TOrvAction& read, const TOrvAction& original, std::size_t whole)
{
    std::size_t same = 0;
    read.Parameters().ForEachByKey(
        [&](std::u16string_view key, std::u16string_view, const TOrvParameter& value, std::size_t) {
            const TOrvParameter* counterpart = original.Parameters().Find(key);
            if (counterpart && counterpart->SameValue(value)) ++same;
        });
    EXPECT_GE(same, whole);
}

void ExpectTruncatedReading(const TOrvAction& action, const std::vector<std::byte>& form, const Field& field,
                            std::size_t size)
{
    const BinaryReading read = ReadBytes({form.begin(), form.begin() + static_cast<std::ptrdiff_t>(size)});
    const auto left = static_cast<std::uint32_t>(size - field.start);
    const std::uint32_t empty = field.endsAll ? static_cast<std::uint32_t>(size) + 1 : kBetweenFields;
    EXPECT_EQ(read.consumed, left > 0 ? left : empty);
    EXPECT_EQ(read.object != nullptr, size >= 4);
    if (!read.object) return;
    EXPECT_EQ(read.object->Parameters().Size(), field.recordsBefore + (left == 0 && field.endsRecord ? 1 : 0));
    ExpectSameValues(*read.object, action, field.recordsBefore);
}

TEST(HostileBinary, EveryTruncationOfEveryAction)
{
    const std::uint32_t open = Platform::LivingCount::Read();
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const ObjectPtr<TOrvAction> action(MakeSampleAction(*entry));
        const std::vector<std::byte> form = BinaryForm(*action);
        const FieldList fields(*action);
        ASSERT_EQ(fields.Get().back().end, form.size());
        for (const Field& field : fields.Get()) {
            for (std::size_t size = field.start; size < field.end; ++size) {
                ExpectTruncatedReading(*action, form, field, size);
            }
        }
        if (HasFailure()) FAIL() << Describe(*action);
    }
    EXPECT_EQ(Platform::LivingCount::Read(), open);
}

// Any object that comes out is one like any other: what it writes reads back and writes the same bytes.
void ExpectSoundReading(const std::vector<std::byte>& bytes)
{
    const BinaryReading read = ReadBytes(bytes);
    EXPECT_TRUE(read.consumed <= bytes.size() + 1 || read.consumed == kBetweenFields) << read.consumed;
    if (!read.object) return;
    const std::vector<std::byte> written = BinaryForm(*read.object);
    EXPECT_LE(written.size(), bytes.size() + 64);
    const BinaryReading again = ReadBytes(written);
    ASSERT_TRUE(again.object);
    EXPECT_EQ(again.consumed, written.size());
    EXPECT_EQ(BinaryForm(*again.object), written);
}

std::vector<ObjectPtr<TOrvAction>> FewActions()
{
    std::vector<ObjectPtr<TOrvAction>> actions;
    for (const char16_t* name : {u"PanLeft", u"EventStarted", u"UserLogin", u"LenelAccessEvent"}) {
        actions.emplace_back(MakeSampleAction(*Catalogue().FindActionByName(name)));
    }
    ObjectPtr<TOrvAction> all(TOrvMatchAction::Create(u"EveryKind"));
    for (std::uint32_t kind = 0; kind <= 13; ++kind) {
        const TOrvParameterInternalInfo info(u"p", kind, 0, 0, 0, 0);
        const char16_t name[] = {u'p', static_cast<char16_t>(u'a' + kind), 0};
        all->Parameters().Store(name, [&](TOrvParameter& value) {
            SetSampleValue(value, info, static_cast<int>(kind));
            value.SetKindAndEnum(kind, 0);
        });
    }
    actions.push_back(std::move(all));
    return actions;
}

// A size above the signed range is no room, wherever the buffer lies, and nothing of it is read.
TEST(HostileBinary, SizesWithoutRoom)
{
    alignas(2) const std::byte bytes[2] = {std::byte{3}};
    for (const std::uint32_t size : {0x80000000u, 0x80000004u, 0xFFFFFFFFu}) {
        for (const std::byte& first : bytes) {
            const BinaryReadResult read = ReadActionBinary(&first, size, ORV_EXPECT_ANY);
            EXPECT_EQ(read.object, nullptr);
            EXPECT_EQ(read.consumed, size);
        }
    }
}

TEST(HostileBinary, EveryByteChanged)
{
    const std::uint32_t open = Platform::LivingCount::Read();
    for (const ObjectPtr<TOrvAction>& action : FewActions()) {
        const std::vector<std::byte> form = BinaryForm(*action);
        for (std::size_t place = 0; place < form.size(); ++place) {
            for (const unsigned change : {0x01u, 0x02u, 0x08u, 0x20u, 0x7Fu, 0x80u, 0xFFu}) {
                std::vector<std::byte> changed = form;
                changed[place] ^= static_cast<std::byte>(change);
                ExpectSoundReading(changed);
                if (HasFailure()) FAIL() << "byte " << place << " of " << Describe(*action);
            }
        }
    }
    EXPECT_EQ(Platform::LivingCount::Read(), open);
}

std::vector<std::byte> WithCount(std::vector<std::byte> form, std::size_t place, std::uint32_t count)
{
    std::memcpy(form.data() + place, &count, sizeof count);
    return form;
}

TEST(HostileBinary, EveryLengthWrong)
{
    for (const char16_t* name : {u"PanLeft", u"UserLogin", u"LenelAccessEvent"}) {
        const ObjectPtr<TOrvAction> action(MakeSampleAction(*Catalogue().FindActionByName(name)));
        const std::vector<std::byte> form = BinaryForm(*action);
        const FieldList fields(*action);
        const std::size_t records = action->Parameters().Size();
        const std::size_t countPlace = 4 + 4 + 2 * (action->Name().size() + 1);
        for (const Field& field : fields.Get()) {
            if (!field.isCount) continue;
            for (const std::uint32_t count : {0u, 1u}) ExpectSoundReading(WithCount(form, field.start, count));
            for (const std::uint32_t count : {0x7FFFFFFFu, 0x80000000u, 0x80000001u, 0xFFFFFFFFu}) {
                const BinaryReading read = ReadBytes(WithCount(form, field.start, count));
                ASSERT_TRUE(read.object);
                const bool ofRecords = field.start == countPlace;
                EXPECT_EQ(read.object->Parameters().Size(), ofRecords ? records : field.recordsBefore);
                EXPECT_EQ(read.consumed, ofRecords ? kBetweenFields : form.size() - field.end);
            }
        }
        for (std::uint32_t count = 0; count <= 1; ++count) {
            const BinaryReading read = ReadBytes(WithCount(form, countPlace, count));
            EXPECT_EQ(read.object->Parameters().Size(), count);
            EXPECT_LT(read.consumed, form.size());
        }
    }
}

}  // namespace
}  // namespace OrvPLC
