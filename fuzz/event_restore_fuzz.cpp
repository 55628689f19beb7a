// Restores and describes arbitrary event records, and fills a record from what came out.
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

#include "events/columns.h"
#include "events/event_description.h"
#include "events/event_restore.h"
#include "events/event_settings.h"
#include "platform/living_count.h"

using namespace OrvPLC;

namespace {

// Takes values off the front of the input; zeros when it has run out.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    template <class Value>
    Value Take()
    {
        Value value{};
        const std::size_t length = std::min(sizeof value, size_);
        std::memcpy(&value, data_, length);
        data_ += length;
        size_ -= length;
        return value;
    }
    std::u16string TakeText(std::size_t length)
    {
        std::u16string text(std::min(length, size_ / sizeof(char16_t)), u'\0');
        std::memcpy(text.data(), data_, text.size() * sizeof(char16_t));
        data_ += text.size() * sizeof(char16_t);
        size_ -= text.size() * sizeof(char16_t);
        return text;
    }
    std::vector<std::uint8_t> Rest() const { return {data_, data_ + size_}; }  // a block of exactly that size

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

// A record with the memory that its pointers refer to.
struct FuzzedRecord {
    TOrvEventData record{};
    std::int32_t small;
    std::int64_t large;
    double real;
    TUlmoDateTime date;
    std::u16string text;
    std::vector<std::uint8_t> image;

    explicit FuzzedRecord(Input& input)
    {
        record.code = input.Take<std::uint32_t>();
        const auto columns = input.Take<Columns>();
        small = input.Take<std::int32_t>();
        large = input.Take<std::int64_t>();
        real = static_cast<double>(large);
        date.value = static_cast<std::uint64_t>(large);
        text = input.TakeText(input.Take<std::uint8_t>());
        image = input.Rest();
        for (Columns left = columns & kAllColumns; left != 0; left &= left - 1) Fill(First(left));
        record.image = image.empty() ? nullptr : image.data();
        record.imageSize = image.size();
    }
    FuzzedRecord(const FuzzedRecord&) = delete;
    FuzzedRecord& operator=(const FuzzedRecord&) = delete;

    void Fill(Columns column)
    {
        VisitColumn(record, column, [this](auto& field) { Set(field); });
    }
    void Set(const std::int32_t*& field) { field = &small; }
    void Set(const std::int64_t*& field) { field = &large; }
    void Set(const double*& field) { field = &real; }
    void Set(const TUlmoDateTime*& field) { field = &date; }
    void Set(TOrvEventText& field) { field = {text.size(), Boundary(text.c_str())}; }
};

template <class Number>
std::uint64_t Read(const Number* number)
{
    return static_cast<std::uint64_t>(*number);
}

std::uint64_t Read(const double* number)
{
    return std::bit_cast<std::uint64_t>(*number);
}

std::uint64_t Read(const TUlmoDateTime* date)
{
    return date->value;
}

// A text may hold zeros, so its end is read as well.
std::uint64_t Read(const TOrvEventText& text)
{
    std::uint64_t sum = 0;
    for (std::uint64_t i = 0; i <= text.length; ++i) sum += Units(text.text)[i];
    if (Units(text.text)[text.length] != 0) std::abort();
    return sum;
}

// The columns of a filled record are there to be read.
void ReadColumns(const TOrvEventData& record)
{
    std::uint64_t sum = 0;
    for (Columns left = FilledColumns(record); left != 0; left &= left - 1) {
        VisitColumn(record, First(left), [&sum](const auto& field) { sum += Read(field); });
    }
    volatile std::uint64_t used = sum;
    static_cast<void>(used);
}

void Refill(TOrvAction* action)
{
    const ObjectPtr<TOrvAction> owned(action);
    if (!owned) std::abort();
    TOrvEventData record{};
    owned->GetEventData(&record);
    ReadColumns(record);
}

void IgnoreCall(OrvWord, std::int32_t, const OrvWChar* label, const OrvWChar* value)
{
    if (!label || !value) std::abort();
}

template <class Work>
void Try(Work&& work)
{
    try {
        work();
    } catch (const std::exception&) {
        // A failure is an answer.
    }
}

}  // namespace

// The first byte selects whether parameters under the names of columns count; the record follows, its image last.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    EventSettings::StoreGenericParameters = (input.Take<std::uint8_t>() & 1) != 0;
    const FuzzedRecord fuzzed(input);
    const std::uint32_t before = Platform::LivingCount::Read();
    Try([&] { Refill(RestoreAction(fuzzed.record)); });
    Try([&] { Refill(RestoreMatchAction(fuzzed.record)); });
    Try([&] { Refill(RestoreFromColumns(fuzzed.record)); });
    Try([&] { DescribeEvent(fuzzed.record, {0, IgnoreCall, nullptr}, 9); });
    if (Platform::LivingCount::Read() != before) std::abort();
    return 0;
}
