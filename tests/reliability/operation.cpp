#include "operation.h"

#include <iterator>
#include <new>

namespace Arguments {

namespace {

OrvBool FillChannel(OrvWord, TOrvChannelValue* channel)
{
    channel->name = reinterpret_cast<const OrvWChar*>(u"the name that the host knows a channel by");
    return 1;
}

OrvBool FillEventType(OrvWord, TOrvEventTypeValue* eventType)
{
    eventType->name = reinterpret_cast<const OrvWChar*>(u"the name that the host knows an event by");
    return 1;
}

OrvBool FillResource(OrvWord, std::uint32_t, TOrvResourceValue* resource)
{
    resource->name = reinterpret_cast<const OrvWChar*>(u"the name that the host knows a resource by");
    return 1;
}

OrvBool FillResourceOfChannel(OrvWord context, std::uint32_t view, TOrvResourceValue* resource, const std::uint64_t*)
{
    return FillResource(context, view, resource);
}

// A sink of any sort: records what it gets, and is not reference counted.
template <class Sink>
struct OfOurs : Sink {
    std::int32_t QueryInterface(const TOrvGuid&, void**) override { return -1; }
    std::uint32_t AddRef() override { return 1; }
    std::uint32_t Release() override { return 1; }
};

struct Enumerator final : OfOurs<ITalvecParameterEnumerator> {
    void OnParameter(const OrvWChar* name, std::uint32_t kind, std::uint32_t) override
    {
        Sample::Tell(name);
        Sample::Tell(std::uint64_t{kind});
    }
};
struct ClassSink final : OfOurs<ITalvecActionClassSink> {
    void OnActionClass(const TTalvecActionClassPlainInfo* record) override { Sample::Tell(record->NameW); }
};
struct ActionSink final : OfOurs<ITalvecActionSink> {
    void OnAction(const TTalvecActionPlainInfo* record) override { Sample::Tell(record->NameW); }
};
struct ParameterSink final : OfOurs<ITalvecParameterSink> {
    void OnParameter(const TTalvecParameterPlainInfo* record) override { Sample::Tell(record->NameW); }
};
struct EnumValueSink final : OfOurs<ITalvecEnumValueSink> {
    void OnEnumValue(const TTalvecEnumValuePlainInfo* record) override { Sample::Tell(record->NameW); }
};

template <class Sink>
Sink* One()
{
    static Sink sink;
    return &sink;
}

using Places = std::vector<std::unique_ptr<Place>>;

// The first object that is made is the one that the call is made on.
Places MakePlaces(const Sample::Case& test, const std::vector<Maker>& makers, TOrvHandle& subject)
{
    Places places;
    for (const Maker make : makers) {
        places.emplace_back(make(Situation{test, static_cast<unsigned>(places.size()), subject}));
    }
    return places;
}

void RunBetween(const Surround& surround, Outcome& outcome, const std::function<void()>& work)
{
    surround.before();
    try {
        work();
        surround.after();
    } catch (const std::bad_alloc&) {
        surround.after();
        outcome.threw = true;
    } catch (...) {
        surround.after();
        outcome.otherThrown = true;
    }
}

}  // namespace

Outcome Call(const std::string& name, unsigned variant, const Surround& surround, const std::vector<Maker>& makers,
             Maker makeResult, const Invoke& invoke)
{
    TOrvHandle subject = nullptr;
    const Sample::Case test{name, variant};
    const Places arguments = MakePlaces(test, makers, subject);
    const std::unique_ptr<Place> result(makeResult({test, 0, subject}));
    std::vector<Place*> given;
    for (const auto& argument : arguments) given.push_back(argument.get());
    Sample::told = 0;
    Outcome outcome;
    if (subject) outcome.before = Sample::StateOf(subject);
    Talvec_Action_SetPriorityLevel(5);  // clears the last error
    RunBetween(surround, outcome, [&] { invoke(given.data(), *result); });
    TOrvLastErrorInfo error{};
    if (OrvAct_GetLastError(&error)) outcome.error = std::string("error: ") + error.message;
    outcome.refused = outcome.threw || outcome.otherThrown || result->IsRefusal();
    result->Finish(outcome.answer, subject);
    for (Place* argument : given) argument->Look(outcome.answer);
    if (subject) outcome.state = Sample::StateOf(subject);
    for (Place* argument : given) argument->Finish(outcome.answer, subject);
    outcome.answer += std::to_string(Sample::told);
    return outcome;
}

Operation MakeOperation(const char* name, bool storesError, bool isInterface, std::vector<Maker> makers,
                        Maker makeResult, Invoke invoke)
{
    return {name, storesError, isInterface, [=](unsigned variant, const Surround& surround) {
                return Call(name, variant, surround, makers, makeResult, invoke);
            }};
}

void MakeValue(TOrvActionInfoUpdateCallbacks& value, const Situation&)
{
    value = {0, FillChannel, FillChannel, FillChannel, FillChannel, FillEventType, FillResource, FillResourceOfChannel};
}

void Lengthen(const OrvWChar*& plainName, unsigned variant)
{
    static const std::u16string texts[] = {u"kurz", std::u16string(40, u'\u00E4'), std::u16string(2000, u'm'), u""};
    plainName = reinterpret_cast<const OrvWChar*>(texts[variant % std::size(texts)].c_str());
}

void OnDescription(OrvWord, std::int32_t index, const OrvWChar* label, const OrvWChar* value)
{
    Sample::Tell(static_cast<std::uint64_t>(index));
    Sample::Tell(label);
    Sample::Tell(value);
}

void OnDescription2(OrvWord context, std::int32_t index, const OrvWChar* label, const OrvWChar* value, std::uint32_t)
{
    OnDescription(context, index, label, value);
}

template <>
ITalvecParameterEnumerator* SinkOfOurs()
{
    return One<Enumerator>();
}
template <>
ITalvecActionClassSink* SinkOfOurs()
{
    return One<ClassSink>();
}
template <>
ITalvecActionSink* SinkOfOurs()
{
    return One<ActionSink>();
}
template <>
ITalvecParameterSink* SinkOfOurs()
{
    return One<ParameterSink>();
}
template <>
ITalvecEnumValueSink* SinkOfOurs()
{
    return One<EnumValueSink>();
}

}  // namespace Arguments
