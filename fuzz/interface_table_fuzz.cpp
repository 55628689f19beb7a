// Builds an object from the input and takes it through every operation of its interfaces. Whatever its values are,
// nothing leaves an operation.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "OrvActions/OrvEvents.h"
#include "events/event_settings.h"
#include "forms/binary_reader.h"
#include "objects/generic_action.h"
#include "objects/match_action.h"
#include "platform/living_count.h"
#include "platform/system_string.h"

using namespace OrvPLC;

namespace {

// Takes values off the front of the input; zeros when it has run out.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool Empty() const { return size_ == 0; }
    template <class Value>
    Value Take()
    {
        Value value{};
        Copy(&value, sizeof value);
        return value;
    }
    std::u16string TakeText()
    {
        std::u16string text(Take<std::uint8_t>() % 32, u'\0');
        Copy(text.data(), text.size() * sizeof(char16_t));
        return text;
    }
    std::pair<const std::uint8_t*, std::uint32_t> Rest() const { return {data_, static_cast<std::uint32_t>(size_)}; }

private:
    void Copy(void* target, std::size_t length)
    {
        const std::size_t given = std::min(length, size_);
        if (given != 0) std::memcpy(target, data_, given);
        data_ += given;
        size_ -= given;
    }

    const std::uint8_t* data_;
    std::size_t size_;
};

void FreeText(OrvBStr text)
{
    Platform::FreeSystemString(reinterpret_cast<char16_t*>(text));
}

// What an operation hands out is there to be read to its end.
void Read(const OrvWChar* text)
{
    volatile std::size_t length = TerminatedView(text).size();
    static_cast<void>(length);
}

// The names that operations are asked for: of what the object holds, and of what hardly any object holds.
class Names final : public ITalvecParameterEnumerator {
public:
    std::vector<std::u16string> all{u"", u"Date", u"nobody"};
    bool throws = false;

    std::int32_t ORV_CALL QueryInterface(const TOrvGuid&, void**) override { return -1; }
    std::uint32_t ORV_CALL AddRef() override { return 1; }
    std::uint32_t ORV_CALL Release() override { return 1; }
    void ORV_CALL OnParameter(const OrvWChar* name, std::uint32_t, std::uint32_t) override
    {
        if (throws) throw std::runtime_error("an enumerator may throw what it likes");
        if (all.size() < 16) all.emplace_back(TerminatedView(name));
    }
};

void ReadParameter(ITalvecMatchAction& object, const OrvWChar* name)
{
    OrvBool truth = 0;
    std::int32_t small = 0;
    std::int64_t large = 0;
    double real = 0;
    OrvBStr text = nullptr;
    TUlmoDateTime date{};
    TOrvGuid guid{};
    TOrvEventTypeValue event{};
    TOrvChannelValue channel{};
    TOrvResourceValue resource{};
    const TOrvResultDataItem* items = nullptr;
    std::uint64_t count = 0;
    const bool present = object.HasParameter(name);
    const bool answers[] = {
        object.GetBoolean(name, &truth),       object.GetInt32(name, &small),
        object.GetInt64(name, &large),         object.GetDouble(name, &real),
        object.GetString(name, &text),         object.GetDateTime(name, &date),
        object.GetGuid(name, &guid),           object.GetEventType(name, &event),
        object.GetMediaChannel(name, &channel), object.GetResource(name, &resource),
        object.GetRect(name, &large),          object.GetResultDataSet(name, &items, &count),
    };
    if (std::find(std::begin(answers), std::end(answers), !present) != std::end(answers)) std::abort();
    object.GetParameterType(name);
    object.GetParameterEnum(name);
    Read(event.name);
    Read(channel.name);
    Read(resource.name);
    for (std::uint64_t i = 0; i != count; ++i) Read(items[i].name);
    FreeText(text);
}

void StoreForms(ITalvecMatchAction& object)
{
    OrvBStr texts[4] = {};
    object.StoreToTextTechnical(&texts[0]);
    object.StoreToTextPlain(&texts[1]);
    ITalvecJson* json = nullptr;
    if (object.QueryInterface(ORV_IID_ITalvecJson, reinterpret_cast<void**>(&json)) != 0) std::abort();
    json->StoreJson(&texts[2], 1);
    json->StoreJsonLimited(&texts[3], 0, 5);
    json->Release();
    std::for_each(std::begin(texts), std::end(texts), FreeText);
    void* block = nullptr;
    std::uint32_t size = 0;
    object.StoreToBinary(&block, &size);
    Platform::FreeTaskMemory(block);
    TOrvEventData record{};
    object.GetEventData(&record);
    for (const TOrvEventText& column : record.stringField) Read(column.text);
}

void ReadFacts(ITalvecMatchAction& object)
{
    object.GetMessageKind();
    object.GetActionClassCode();
    object.GetActionCode();
    object.GetActionPriority();
    object.GetActionFlags();
    Read(object.GetActionClassName());
    Read(object.GetActionName());
    Read(object.GetActionPlainName());
    Read(object.GetActionDescription());
    Read(object.GetDescription());
    object.SetDescription(object.GetActionName());
    if (object.HasDescription()) std::abort();
}

void ReadAll(ITalvecMatchAction& object)
{
    ReadFacts(object);
    StoreForms(object);
    Names names;
    object.EnumerateParameters(nullptr);
    object.EnumerateParameters(&names);
    names.throws = true;
    object.EnumerateParameters(&names);
    for (const std::u16string& name : names.all) ReadParameter(object, Boundary(name.c_str()));
    StoreForms(object);  // the reads have written into the values
}

// One write, chosen by the input. A value may come under any name, declared or not, and of any kind.
void Write(ITalvecMatchAction& object, Input& input)
{
    const auto* entry = ActionOf(HandleOf(static_cast<TOrvMessage*>(&object))).Entry();
    const auto choice = input.Take<std::uint8_t>();
    const auto place = input.Take<std::uint8_t>();
    const std::u16string other = choice & 0x80 ? input.TakeText() : u"User1";
    const bool declared = entry && place < entry->Parameters.size();
    const OrvWChar* name = Boundary(declared ? entry->Parameters[place].NameW.c_str() : other.c_str());
    const auto large = input.Take<std::int64_t>();
    const auto* date = reinterpret_cast<const TUlmoDateTime*>(&large);
    const auto* real = reinterpret_cast<const double*>(&large);
    const std::u16string text = input.TakeText();
    const OrvWChar* given = Boundary(text.c_str());
    const TOrvGuid guid{static_cast<std::uint32_t>(large), 0, 0, {}};
    const TOrvEventTypeValue event{static_cast<std::uint64_t>(large), given, 0};
    const TOrvChannelValue channel{static_cast<std::uint64_t>(large), given, place};
    const TOrvResourceValue resource{guid, given};
    const TOrvResultDataItem item{1, 2, -3, 4, static_cast<std::int32_t>(large), nullptr};
    switch (choice % 15) {
    case 0: object.SetBoolean(name, static_cast<OrvBool>(large)); break;
    case 1: object.SetInt32(name, static_cast<std::int32_t>(large)); break;
    case 2: object.SetInt64(name, &large); break;
    case 3: object.SetDouble(name, real); break;
    case 4: object.SetString(name, given); break;
    case 5: object.SetDateTime(name, date); break;
    case 6: object.SetGuid(name, &guid); break;
    case 7: object.SetEventType(name, &event); break;
    case 8: object.SetMediaChannel(name, &channel); break;
    case 9: object.SetResource(name, &resource); break;
    case 10: object.SetRect(name, &large); break;
    case 11: object.SetResultDataSet(name, &item, place % 2); break;
    case 12: object.SetEnum(name, static_cast<std::int32_t>(large), place); break;
    case 13: object.SetString(name, nullptr); break;
    default: object.RemoveParameter(name); break;
    }
}

// What the object makes of itself. The objects come without a reference.
void Derive(ITalvecMatchAction& object)
{
    ITalvecMatchAction* pattern = object.CreateMatchAction();
    pattern->AddRef();
    // A pattern of the object's own values matches, unless one of them matches nothing, such as a NaN.
    pattern->Matches(&object);
    if (pattern->Matches(nullptr) || object.Matches(nullptr)) std::abort();
    ReadAll(*pattern);
    for (ITalvecAction* templateAction : {static_cast<ITalvecAction*>(nullptr), static_cast<ITalvecAction*>(&object)}) {
        if (ITalvecAction* made = pattern->CreateActionFromTemplate(templateAction)) made->Release();
    }
    pattern->Release();
}

TOrvMessage* MakeObject(Input& input)
{
    const auto options = input.Take<std::uint8_t>();
    EventSettings::StoreGenericParameters = (options & 8u) != 0;
    const TOrvChannelValue channel{options, nullptr, 0};
    if (options & 1u) {
        const auto [data, size] = input.Rest();
        return ReadActionBinary(data, size, ORV_EXPECT_ANY).object;
    }
    if ((options & 6u) == 6u) return TOrvGenericAction::Create({GenericChannel(&channel), {}, {}, {}, 7});
    const auto* entry = Catalogue().FindActionByIndex(input.Take<std::uint16_t>() % 430u);
    const std::u16string_view name = entry ? entry->NameW.view() : u"Nobody";
    if (options & 2u) return TOrvMatchAction::Create(name);
    return TOrvAction::Create(name);
}

}  // namespace

// The first byte selects the sort of object; then either a binary form follows, or the place of an action in the
// catalogue and the values that are written to it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::uint32_t before = Platform::LivingCount::Read();
    Input input(data, size);
    TOrvMessage* made = nullptr;
    try {
        made = MakeObject(input);
    } catch (const std::exception&) {
        // A buffer may be refused with a failure; this is no operation of a table.
    }
    if (made) {
        ITalvecMatchAction& object = *made;
        for (int count = 0; count < 12 && !input.Empty(); ++count) Write(object, input);
        ReadAll(object);
        Derive(object);
        object.Release();
    }
    if (Platform::LivingCount::Read() != before) std::abort();
    return 0;
}
