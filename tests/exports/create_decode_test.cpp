// Drives every create and decode function with values by kind and place.
#include <cstddef>

#include "exports/create_decode_pairs.h"

namespace {

using OrvTest::Cell;
using OrvTest::Cells;
using OrvTest::Handle;
using OrvTest::Pair;
using OrvTest::Shape;
using OrvTest::Text;
using OrvTest::W;

const std::vector<Pair>& Pairs()
{
#define ORV_PAIR(pair, action) OrvTest::MakePair(#pair, u"" #action, OrvAct_Create##pair, OrvAct_Decode##pair),
    static const std::vector<Pair> pairs{ORV_FOR_EACH_PAIR(ORV_PAIR)};
#undef ORV_PAIR
    return pairs;
}

// A parameter of a pair with the cells of its arguments.
struct Parameter {
    TTalvecParameterPlainInfo declared;
    Shape shape;
    std::size_t cell;

    bool IsOptional() const { return shape.isPointerOutput && declared.Type != ORV_KIND_ResultDataSet; }
    // Optional channels and resources read as null, set or not.
    bool IsNeverDecoded() const
    {
        return IsOptional() && (declared.Type == ORV_KIND_MediaChannel || declared.Type == ORV_KIND_Resource);
    }
};

std::vector<Parameter> ParametersOf(const Pair& pair)
{
    const std::uint32_t code = OrvAct_GetActionCodeByNameW(W(pair.action.c_str()));
    std::vector<TTalvecParameterPlainInfo> declared(64);
    declared.resize(Talvec_Action_EnumerateActionParameters(declared.data(), 64, code));
    std::vector<Parameter> parameters;
    std::size_t cell = 0;
    for (const TTalvecParameterPlainInfo& one : declared) {
        if (cell == pair.shapes.size()) break;  // a plain pair leaves the last ones to the extended pair
        parameters.push_back({one, pair.shapes[cell], cell});
        cell += one.Type == ORV_KIND_ResultDataSet ? 2 : 1;
    }
    EXPECT_EQ(cell, pair.shapes.size());
    return parameters;
}

// No value is its kind's default, and no two places have the same.
Cells CellsFor(const Pair& pair, const std::vector<Parameter>& parameters)
{
    static const std::u16string name = u"a name that does not fit into a string object";
    Cells cells(pair.shapes.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        Cell& cell = cells[i];
        const auto place = static_cast<std::uint16_t>(i + 1);
        cell.truth = 1;
        cell.number = 100 + place;
        cell.large = (std::int64_t{1} << 40) + place;
        cell.real = place + 0.5;
        cell.date = {std::uint64_t{13'000'000'000'000} + place};
        cell.guid = {place, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
        cell.event = {place + 1000u, W(name.c_str()), 1};
        cell.channel = {place + 2000u, W(name.c_str()), place};
        cell.resource = {cell.guid, W(name.c_str())};
        cell.items = {{place, 2, -3, -4, 5, nullptr}, {6, place, 8, 9, 10, nullptr}};
        cell.wide = u"text " + std::u16string(place, u'\u00E4');
        cell.narrow = "narrow " + std::string(place, 'x');
    }
    for (const Parameter& one : parameters) {
        if (one.declared.Type == ORV_KIND_ResultDataSet) cells[one.cell + 1].number = 2;
    }
    return cells;
}

// The same by the setter of the kind and the name from the catalogue.
void SetByName(const Handle& action, const Parameter& one, const Cell& cell)
{
    const OrvWChar* name = one.declared.NameW;
    const std::u16string narrow(cell.narrow.begin(), cell.narrow.end());
    switch (one.declared.Type) {
    case ORV_KIND_Boolean: return action->SetBoolean(name, cell.truth);
    case ORV_KIND_Numeric32Bit: return action->SetInt32(name, cell.number);
    case ORV_KIND_Numeric64Bit: return action->SetInt64(name, &cell.large);
    case ORV_KIND_NumericDouble: return action->SetDouble(name, &cell.real);
    case ORV_KIND_String: return action->SetString(name, W(one.shape.isNarrow ? narrow.c_str() : cell.wide.c_str()));
    case ORV_KIND_DateTime: return action->SetDateTime(name, &cell.date);
    case ORV_KIND_Guid: return action->SetGuid(name, &cell.guid);
    case ORV_KIND_EventType: return action->SetEventType(name, &cell.event);
    case ORV_KIND_MediaChannel: return action->SetMediaChannel(name, &cell.channel);
    case ORV_KIND_Resource: return action->SetResource(name, &cell.resource);
    case ORV_KIND_Rect: return action->SetRect(name, &cell.large);
    case ORV_KIND_ResultDataSet: return action->SetResultDataSet(name, cell.items.data(), cell.items.size());
    default: FAIL() << "kind " << one.declared.Type;
    }
}

template <class T>
bool Same(const T& a, const T& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// An output that is a value, or points at one.
template <class T>
T Decoded(const Cell& cell, const Shape& shape)
{
    return shape.isPointerOutput ? *cell.Output<const T*>() : cell.Output<T>();
}

bool SameItems(const Cell& cell, const TOrvResultDataItem* items, std::uint32_t count)
{
    if (count != cell.items.size()) return false;
    constexpr std::size_t numbers = offsetof(TOrvResultDataItem, field4) + sizeof(std::int32_t);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (std::memcmp(&items[i], &cell.items[i], numbers) != 0) return false;
    }
    return true;
}

bool IsDecoded(const Parameter& one, const Cells& cells)
{
    const Cell& cell = cells[one.cell];
    switch (one.declared.Type) {
    case ORV_KIND_Boolean:
        return (one.shape.isPointerOutput ? *cell.Output<const std::int32_t*>() : cell.Output<OrvBool>()) == 1;
    case ORV_KIND_Numeric32Bit: return Decoded<std::int32_t>(cell, one.shape) == cell.number;
    case ORV_KIND_Numeric64Bit:
    case ORV_KIND_Rect: return Decoded<std::int64_t>(cell, one.shape) == cell.large;
    case ORV_KIND_NumericDouble: return Same(Decoded<double>(cell, one.shape), cell.real);
    case ORV_KIND_String:
        return one.shape.isNarrow ? cell.Output<const char*>() == cell.narrow
                                  : Text(cell.Output<const OrvWChar*>()) == cell.wide;
    case ORV_KIND_DateTime: return Decoded<TUlmoDateTime>(cell, one.shape).value == cell.date.value;
    case ORV_KIND_Guid: return Same(cell.Output<TOrvGuid>(), cell.guid);
    case ORV_KIND_EventType: {
        const auto event = cell.Output<TOrvEventTypeValue>();
        return event.id == cell.event.id && Text(event.name) == Text(cell.event.name) && event.reserved == 0;
    }
    case ORV_KIND_MediaChannel: {
        const auto channel = cell.Output<TOrvChannelValue>();
        return channel.id == cell.channel.id && Text(channel.name) == Text(cell.channel.name) &&
               channel.number == cell.channel.number;
    }
    case ORV_KIND_Resource: {
        const auto resource = cell.Output<TOrvResourceValue>();
        return Same(resource.guid, cell.resource.guid) && Text(resource.name) == Text(cell.resource.name);
    }
    case ORV_KIND_ResultDataSet:
        return SameItems(cell, cell.Output<const TOrvResultDataItem*>(), cells[one.cell + 1].Output<std::uint32_t>());
    default: return false;
    }
}

// How many bytes of an output are written for a parameter that is not there.
std::size_t ZeroBytes(const Parameter& one)
{
    if (one.IsOptional()) return sizeof(void*);
    switch (one.declared.Type) {
    case ORV_KIND_Boolean: return sizeof(OrvBool);
    case ORV_KIND_Numeric32Bit: return sizeof(std::int32_t);
    case ORV_KIND_Guid: return sizeof(TOrvGuid);
    case ORV_KIND_EventType: return sizeof(TOrvEventTypeValue);
    case ORV_KIND_MediaChannel: return offsetof(TOrvChannelValue, number) + sizeof(std::uint32_t);
    case ORV_KIND_Resource: return sizeof(TOrvResourceValue);
    default: return 8;
    }
}

bool IsAbsent(const Parameter& one, const Cells& cells)
{
    const Cell& cell = cells[one.cell];
    const bool isEnum = one.declared.Type == ORV_KIND_Numeric32Bit && one.declared.EnumType != 0;
    if (isEnum && !one.IsOptional()) return cell.Output<std::uint32_t>() == 0x7FFFFFFF;
    if (one.declared.Type == ORV_KIND_ResultDataSet && cells[one.cell + 1].Output<std::uint32_t>() != 0) return false;
    const unsigned char zeros[sizeof cell.output] = {};
    return std::memcmp(cell.output, zeros, ZeroBytes(one)) == 0;
}

class EveryPair : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(OrvAct_GetNumberOfOpenHandles(), before_); }

    template <class Check>
    static void ForEach(Check check)
    {
        EXPECT_EQ(Pairs().size(), 433u);
        for (const Pair& pair : Pairs()) {
            SCOPED_TRACE(pair.name);
            const std::vector<Parameter> parameters = ParametersOf(pair);
            Cells cells = CellsFor(pair, parameters);
            check(pair, parameters, cells);
        }
    }

private:
    std::uint32_t before_ = OrvAct_GetNumberOfOpenHandles();
};

TEST_F(EveryPair, CreatesWhatTheSettersWouldAndDecodesIt)
{
    ForEach([](const Pair& pair, const std::vector<Parameter>& parameters, Cells& cells) {
        const Handle action = pair.Create(cells);
        const Handle expected(Talvec_Action_CreateActionByName(W(pair.action.c_str())));
        for (const Parameter& one : parameters) SetByName(expected, one, cells[one.cell]);
        EXPECT_TRUE(OrvTest::Equal(action, expected));
        EXPECT_TRUE(pair.Decode(action, cells));
        for (const Parameter& one : parameters) {
            const std::uint32_t enumType = one.declared.Type == ORV_KIND_Numeric32Bit ? one.declared.EnumType : 0;
            EXPECT_EQ(action->GetParameterEnum(one.declared.NameW), enumType) << one.declared.NameA;
            EXPECT_TRUE(one.IsNeverDecoded() ? IsAbsent(one, cells) : IsDecoded(one, cells)) << one.declared.NameA;
        }
    });
}

TEST_F(EveryPair, TellsWhatIsNotInTheAction)
{
    ForEach([](const Pair& pair, const std::vector<Parameter>& parameters, Cells& cells) {
        const Handle action = pair.Create(cells);
        for (const Parameter& one : parameters) action->RemoveParameter(one.declared.NameW);
        EXPECT_TRUE(pair.Decode(action, cells));
        for (const Parameter& one : parameters) EXPECT_TRUE(IsAbsent(one, cells)) << one.declared.NameA;
    });
}

TEST_F(EveryPair, LeavesUnsetWhatIsNull)
{
    ForEach([](const Pair& pair, const std::vector<Parameter>& parameters, Cells& cells) {
        for (const Parameter& one : parameters) cells[one.cell].isNull = one.IsOptional();
        const Handle action = pair.Create(cells);
        EXPECT_TRUE(pair.Decode(action, cells));
        for (const Parameter& one : parameters) {
            EXPECT_NE(action->HasParameter(one.declared.NameW), one.IsOptional()) << one.declared.NameA;
            EXPECT_TRUE(one.IsOptional() ? IsAbsent(one, cells) : IsDecoded(one, cells)) << one.declared.NameA;
        }
    });
}

TEST_F(EveryPair, RefusesAnyOtherAction)
{
    const Handle stop(OrvAct_CreateStopAllEvents());
    const Handle generic(OrvAct_CreateGenericAction(nullptr, nullptr, nullptr, nullptr, 0));
    ForEach([&](const Pair& pair, const std::vector<Parameter>&, Cells& cells) {
        EXPECT_FALSE(pair.Decode(pair.action == u"StopAllEvents" ? generic : stop, cells));
        const auto failure = OrvTest::LastError();
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->code, 1008u);
        EXPECT_EQ(failure->subCode, 3u);
        EXPECT_EQ(failure->message, u"Wrong decode method");
        for (const Cell& cell : cells) EXPECT_EQ(cell.Output<std::uint64_t>(), 0xA5A5A5A5A5A5A5A5);
    });
}

}  // namespace
