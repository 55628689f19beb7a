// One operation of the library as something that can be called without knowing its arguments: they are made by type,
// the answer becomes text, and everything that the call handed out is given back.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "sample.h"

struct Outcome {
    std::string answer;         // result and outputs
    std::string before, state;  // the object that the call was made on, before and after it
    std::string error;          // what the last error says, if there is one
    bool refused = false;       // the result says no, or the operation threw for memory
    bool threw = false;
    bool otherThrown = false;  // something else left the operation
};

// What stands around the bare call: begins and ends counting allocations.
struct Surround {
    std::function<void()> before, after;
};

struct Operation {
    std::string name;
    bool storesError;  // a failure leaves a last error
    bool isInterface;
    std::function<Outcome(unsigned variant, const Surround&)> call;
};

namespace Arguments {

using Sample::Case;
using Sample::Describe;

inline void DescribeOne(std::string& answer, const OrvWChar* value)
{
    Describe(answer, value);
}
inline void DescribeOne(std::string& answer, const char* value)
{
    Describe(answer, value);
}
template <class Value>
void DescribeOne(std::string& answer, const Value& value)
{
    if constexpr (requires { Describe(answer, value); }) {
        Describe(answer, value);
    } else {
        Sample::DescribeBytes(answer, &value, sizeof value);
    }
}

template <class T>
inline constexpr bool kIsObject = std::is_base_of_v<OrvUnknown, T>;
template <>
inline constexpr bool kIsObject<OrvActionObject> = true;  // known by name alone
template <class T>
inline constexpr bool kIsSink = std::is_same_v<T, ITalvecParameterEnumerator> ||
                                std::is_same_v<T, ITalvecActionClassSink> || std::is_same_v<T, ITalvecActionSink> ||
                                std::is_same_v<T, ITalvecParameterSink> || std::is_same_v<T, ITalvecEnumValueSink>;

template <class Object>
TOrvHandle HandleOf(Object* object)
{
    return reinterpret_cast<TOrvHandle>(object);
}

// An object that a call made: described, then released.
inline void DescribeAndClose(std::string& answer, TOrvHandle made, TOrvHandle subject)
{
    if (!made) {
        answer += "(no object);";
    } else if (made == subject) {
        answer += "(the object);";
    } else {
        answer += Sample::StateOf(made);
        answer += std::to_string(Sample::CloseAll(made)) + ';';
    }
}

struct Situation {
    Case test;
    unsigned place;
    TOrvHandle& subject;  // the first object of the call
};

// By value: numbers.
template <class T>
struct Of {
    T value;
    explicit Of(const Situation& s) : value(static_cast<T>(Sample::Number(s.test, s.place, sizeof(T)))) {}
    void Finish(std::string&, TOrvHandle) {}
};

template <>
struct Of<double> {
    double value = 1.5;
    explicit Of(const Situation&) {}
    void Finish(std::string&, TOrvHandle) {}
};

template <>
struct Of<OrvBStr> {
    OrvBStr value = nullptr;
    std::vector<OrvWChar> room;
    bool made = false;
    explicit Of(const Situation& s)
    {
        if (s.test.function.starts_with("Sys")) {
            value = SysAllocString(reinterpret_cast<const OrvWChar*>(u"a system string of some length"));
            made = s.test.function != "SysFreeString";
        } else {
            room.resize(8192);
            value = room.data();
        }
    }
    void Finish(std::string& answer, TOrvHandle)
    {
        if (!room.empty()) Describe(answer, static_cast<const OrvWChar*>(value));
        if (made) SysFreeString(value);
    }
};

template <>
struct Of<char*> {
    std::vector<char> room = std::vector<char>(8192);
    char* value = room.data();
    explicit Of(const Situation&) {}
    void Finish(std::string& answer, TOrvHandle) { Describe(answer, value); }
};

template <>
struct Of<void*> {
    std::vector<char> room = std::vector<char>(8192);
    void* value = room.data();
    explicit Of(const Situation& s)
    {
        if (s.test.function == "CoTaskMemFree") value = CoTaskMemAlloc(8);
    }
    void Finish(std::string& answer, TOrvHandle) { Sample::DescribeBytes(answer, room.data(), room.size()); }
};

template <>
struct Of<const void*> {
    const void* value = Sample::Image().data();
    explicit Of(const Situation&) {}
    void Finish(std::string&, TOrvHandle) {}
};

template <>
struct Of<const OrvWChar*> {
    const OrvWChar* value;
    explicit Of(const Situation& s) : value(reinterpret_cast<const OrvWChar*>(Sample::Text(s.test, s.place))) {}
    void Finish(std::string&, TOrvHandle) {}
};

template <>
struct Of<const char*> {
    const char* value;
    explicit Of(const Situation& s) : value(Sample::NarrowText(s.test, s.place)) {}
    void Finish(std::string&, TOrvHandle) {}
};

// Objects: the first is the subject of the call, others are further ones.
template <class Object>
requires kIsObject<Object> &&(!kIsSink<Object>)struct Of<Object*> {
    TOrvHandle made;
    Object* value;
    bool isSubject;
    explicit Of(const Situation& s) : made(Sample::MakeSubject(s.test)), isSubject(!s.subject)
    {
        value = reinterpret_cast<Object*>(made);
        if (!isSubject) return;
        s.subject = made;
        OrvInterfaceOf(made)->AddRef();  // for operations that take one away
        OrvInterfaceOf(made)->AddRef();
    }
    void Finish(std::string& answer, TOrvHandle)
    {
        if (!isSubject)
            Sample::CloseAll(made);
        else
            answer += std::to_string(Sample::CloseAll(made)) + " references;";
    }
};

template <class Object>
requires kIsObject<Object>
struct Of<Object**> {
    Object* made = nullptr;
    Object** value = &made;
    explicit Of(const Situation&) {}
    void Finish(std::string& answer, TOrvHandle subject) { DescribeAndClose(answer, HandleOf(made), subject); }
};

template <>
struct Of<void**> {
    void* made = nullptr;
    void** value = &made;
    bool isBlock;
    explicit Of(const Situation& s) : isBlock(s.test.function == "StoreToBinary") {}
    void Finish(std::string& answer, TOrvHandle)
    {
        answer += made ? "(block);" : "(null);";
        if (isBlock) CoTaskMemFree(made);
    }
};

template <>
struct Of<OrvBStr*> {
    OrvBStr made = nullptr;
    OrvBStr* value = &made;
    explicit Of(const Situation&) {}
    void Finish(std::string& answer, TOrvHandle)
    {
        Describe(answer, static_cast<const OrvWChar*>(made));
        SysFreeString(made);
    }
};

// Pointers that a call sets to something inside the object or the catalogue.
template <class Pointee>
requires(!kIsObject<Pointee>) && (!std::is_same_v<Pointee, void>)struct Of<const Pointee**> {
    const Pointee* given = nullptr;
    const Pointee** value = &given;
    explicit Of(const Situation&) {}
    void Finish(std::string&, TOrvHandle) {}
    // Before the object goes; items and the like count with the number that stands beside them, here the first.
    void Look(std::string& answer)
    {
        if constexpr (std::is_same_v<Pointee, OrvWChar> || std::is_same_v<Pointee, char>) {
            Describe(answer, given);
        } else if (given) {
            DescribeOne(answer, *given);
        } else {
            answer += "(null);";
        }
    }
};

// Records and numbers that a call fills, one or as many as an enumeration may want.
template <class Value>
requires(!kIsObject<Value>) && (!std::is_pointer_v<Value>)&&(!std::is_const_v<Value>)&&(!std::is_void_v<Value>)&&(
                                   !std::is_same_v<Value, char>)&&(!std::is_same_v<Value, OrvWChar>)struct Of<Value*> {
    std::vector<Value> values;
    Value* value;
    explicit Of(const Situation& s) : values(s.test.function.find("Enumerate") == std::string_view::npos ? 1 : 2000)
    {
        value = values.data();
        if constexpr (std::is_same_v<Value, TOrvEventData>) value->size = sizeof(TOrvEventData);
    }
    void Look(std::string& answer)
    {
        for (const Value& one : values) DescribeOne(answer, one);
    }
    void Finish(std::string&, TOrvHandle)
    {
        if constexpr (std::is_same_v<Value, TOrvParameterValue>) SysFreeString(value->text);
    }
};

template <>
struct Of<TOrvResultDataList*> {
    TOrvResultDataList made{};
    TOrvResultDataList* value = &made;
    explicit Of(const Situation&) {}
    void Look(std::string& answer)
    {
        for (std::uint64_t i = 0; i < made.count; ++i) Describe(answer, made.items[i]);
    }
    void Finish(std::string&, TOrvHandle) {}
};

// Values that a call reads.
template <class Value>
void MakeValue(Value& value, const Situation&)
{
    if constexpr (std::is_arithmetic_v<Value>) value = 3;
}
inline void MakeValue(TUlmoDateTime& value, const Situation&)
{
    value = {13350000000000ULL};
}
inline void MakeValue(TOrvChannelValue& value, const Situation&)
{
    value = Sample::ParameterValue(ORV_KIND_MediaChannel).payload.channel;
}
inline void MakeValue(TOrvResourceValue& value, const Situation&)
{
    value = Sample::ParameterValue(ORV_KIND_Resource).payload.resource;
}
inline void MakeValue(TOrvEventTypeValue& value, const Situation&)
{
    const auto made = Sample::ParameterValue(ORV_KIND_EventType).payload.eventType;
    value = {made.id, made.name, 0};
}
inline void MakeValue(TOrvParameterValue& value, const Situation& s)
{
    value = Sample::ParameterValue(s.test.variant % (Sample::kKinds + 1));
}
inline void MakeValue(TOrvEventData& value, const Situation&)
{
    value = Sample::EventRecord();
}
inline void MakeValue(TOrvActionClassPlainInfo& value, const Situation&)
{
    OrvAct_GetActionClassInfo(&value, 1);
}
inline void MakeValue(TTalvecActionClassPlainInfo& value, const Situation&)
{
    Talvec_Action_GetActionClassInfo(&value, 1);
}
inline void MakeValue(TOrvActionPlainInfo& value, const Situation&)
{
    OrvAct_GetActionInfo(&value, OrvAct_GetActionCodeByNameA("CameraOn"));
}
inline void MakeValue(TTalvecActionPlainInfo& value, const Situation&)
{
    Talvec_Action_GetActionInfo(&value, OrvAct_GetActionCodeByNameA("CameraOn"));
}
inline void MakeValue(TOrvParameterPlainInfo& value, const Situation&)
{
    OrvAct_GetActionParameterInfo(&value, OrvAct_GetActionCodeByNameA("CameraOn"), 0);
}
inline void MakeValue(TTalvecParameterPlainInfo& value, const Situation&)
{
    Talvec_Action_GetActionParameterInfo(&value, OrvAct_GetActionCodeByNameA("CameraOn"), 0);
}
inline void MakeValue(TOrvEnumValuePlainInfo& value, const Situation&)
{
    OrvAct_GetEnumValueInfo(&value, 11, 0);
}
inline void MakeValue(TTalvecEnumValuePlainInfo& value, const Situation&)
{
    Talvec_Action_GetEnumValueInfo(&value, 2, 0x1001, 0);
}
void MakeValue(TOrvActionInfoUpdateCallbacks& value, const Situation&);
inline void EndValue(TOrvParameterValue& value)
{
    SysFreeString(value.text);
}
template <class Value>
void EndValue(Value&)
{}

// A text set writes longer and longer texts, so that a call has to find room.
void Lengthen(const OrvWChar*& plainName, unsigned variant);

template <class Value>
requires(!kIsObject<Value>) &&
    (!std::is_void_v<Value>)&&(!std::is_same_v<Value, char>)&&(!std::is_same_v<Value, OrvWChar>)&&(
        !std::is_pointer_v<Value>)&&(!std::is_same_v<Value, TOrvResultDataItem>)struct Of<const Value*> {
    Value given{};
    const Value* value = &given;
    explicit Of(const Situation& s)
    {
        MakeValue(given, s);
        if constexpr (requires { given.PlainNameW; }) Lengthen(given.PlainNameW, s.test.variant);
    }
    void Finish(std::string&, TOrvHandle) { EndValue(given); }
};

// Items of a set, as many as every number says.
template <>
struct Of<const TOrvResultDataItem*> {
    TOrvResultDataItem items[3];
    const TOrvResultDataItem* value = items;
    explicit Of(const Situation&)
    {
        for (TOrvResultDataItem& item : items) {
            item = {1, 2, 3, 4, 5, SysAllocString(reinterpret_cast<const OrvWChar*>(u"the name of an item"))};
        }
    }
    void Finish(std::string&, TOrvHandle)
    {
        for (TOrvResultDataItem& item : items) SysFreeString(item.name);
    }
};

template <>
struct Of<const TOrvGuid&> {
    const TOrvGuid& value = ORV_IID_ITalvecMatchAction;
    explicit Of(const Situation&) {}
    void Finish(std::string&, TOrvHandle) {}
};

void OnDescription(OrvWord, std::int32_t index, const OrvWChar* label, const OrvWChar* value);
void OnDescription2(OrvWord, std::int32_t index, const OrvWChar* label, const OrvWChar* value, std::uint32_t priority);

template <>
struct Of<TOrvEventDescriptionCallback> {
    TOrvEventDescriptionCallback value = OnDescription;
    explicit Of(const Situation&) {}
    void Finish(std::string&, TOrvHandle) {}
};

template <>
struct Of<TOrvEventDescriptionCallback2> {
    TOrvEventDescriptionCallback2 value = OnDescription2;
    explicit Of(const Situation&) {}
    void Finish(std::string&, TOrvHandle) {}
};

template <class Sink>
Sink* SinkOfOurs();

template <class Sink>
requires kIsSink<Sink>
struct Of<Sink*> {
    Sink* value = SinkOfOurs<Sink>();
    explicit Of(const Situation&) {}
    void Finish(std::string&, TOrvHandle) {}
};

// What a call returned.
template <class Result>
struct ResultOf {
    Result value{};
    bool IsRefusal() const
    {
        if constexpr (std::is_pointer_v<Result>) return !value;
        // A status of the pointer family has its highest bit set.
        else
            return value == 0 || (sizeof(value) == 4 && (static_cast<std::uint64_t>(value) & 0x80000000) != 0);
    }
    void Finish(std::string& answer, TOrvHandle subject)
    {
        if constexpr (std::is_pointer_v<Result> && kIsObject<std::remove_pointer_t<Result>>) {
            DescribeAndClose(answer, HandleOf(value), subject);
        } else if constexpr (std::is_same_v<Result, OrvBStr>) {
            Describe(answer, static_cast<const OrvWChar*>(value));
            SysFreeString(value);
        } else if constexpr (std::is_same_v<Result, void*>) {
            CoTaskMemFree(value);
        } else if constexpr (std::is_pointer_v<Result>) {
            Describe(answer, value);
        } else {
            answer += std::to_string(+value) + ';';
        }
    }
};

template <>
struct ResultOf<void> {
    bool IsRefusal() const { return false; }
    void Finish(std::string&, TOrvHandle) {}
};

// Both with their types forgotten, so that little has to be compiled for each of the many functions.
struct Place {
    virtual ~Place() = default;
    virtual bool IsRefusal() const { return false; }
    virtual void Look(std::string&) {}
    virtual void Finish(std::string& answer, TOrvHandle subject) = 0;
};

template <class Held>
struct PlaceOf final : Place {
    Held held;
    PlaceOf() = default;
    explicit PlaceOf(const Situation& s) : held(s) {}
    bool IsRefusal() const override
    {
        if constexpr (requires { held.IsRefusal(); })
            return held.IsRefusal();
        else
            return false;
    }
    void Look(std::string& answer) override
    {
        if constexpr (requires { held.Look(answer); }) held.Look(answer);
    }
    void Finish(std::string& answer, TOrvHandle subject) override { held.Finish(answer, subject); }
};

using Maker = Place* (*)(const Situation&);
template <class Type>
Place* Make(const Situation& s)
{
    return new PlaceOf<Of<Type>>(s);
}
template <class Result>
Place* MakeResult(const Situation&)
{
    return new PlaceOf<ResultOf<Result>>;
}

using Invoke = std::function<void(Place* const* arguments, Place& result)>;
Outcome Call(const std::string& name, unsigned variant, const Surround& surround, const std::vector<Maker>& makers,
             Maker makeResult, const Invoke& invoke);

template <class Type>
auto& ValueIn(Place* place)
{
    return static_cast<PlaceOf<Of<Type>>*>(place)->held.value;
}

template <class Result, class... Types, std::size_t... Places>
void InvokeFunction(Result (*function)(Types...), Place* const* given, Place& result, std::index_sequence<Places...>)
{
    static_cast<void>(given);
    if constexpr (std::is_void_v<Result>) {
        function(ValueIn<Types>(given[Places])...);
    } else {
        static_cast<PlaceOf<ResultOf<Result>>&>(result).held.value = function(ValueIn<Types>(given[Places])...);
    }
}

template <class Interface, class Result, class... Types, std::size_t... Places>
void InvokeMember(Result (Interface::*member)(Types...), Place* const* given, Place& result,
                  std::index_sequence<Places...>)
{
    // An object is one pointer for every interface but that of JSON, which a caller asks for.
    ITalvecMatchAction* object = ValueIn<ITalvecMatchAction*>(given[0]);
    Interface* self = nullptr;
    if constexpr (std::is_same_v<Interface, ITalvecJson>) {
        object->QueryInterface(ORV_IID_ITalvecJson, reinterpret_cast<void**>(&self));
        object->Release();
    } else {
        self = object;
    }
    if constexpr (std::is_void_v<Result>) {
        (self->*member)(ValueIn<Types>(given[Places + 1])...);
    } else {
        static_cast<PlaceOf<ResultOf<Result>>&>(result).held.value =
            (self->*member)(ValueIn<Types>(given[Places + 1])...);
    }
}

Operation MakeOperation(const char* name, bool storesError, bool isInterface, std::vector<Maker> makers,
                        Maker makeResult, Invoke invoke);

template <class Result, class... Types>
Operation OfFunction(const char* name, bool storesError, Result (*function)(Types...))
{
    return MakeOperation(name, storesError, false, {Make<Types>...}, MakeResult<Result>,
                         [function](Place* const* given, Place& result) {
                             InvokeFunction(function, given, result, std::index_sequence_for<Types...>());
                         });
}

// An operation of an interface is a call whose first argument is the object.
template <class Interface, class Result, class... Types>
Operation OfMember(const char* name, Result (Interface::*member)(Types...))
{
    return MakeOperation(name, false, true, {Make<ITalvecMatchAction*>, Make<Types>...}, MakeResult<Result>,
                         [member](Place* const* given, Place& result) {
                             InvokeMember(member, given, result, std::index_sequence_for<Types...>());
                         });
}

}  // namespace Arguments

#define EXPORT(function, storesError) all.push_back(Arguments::OfFunction(#function, storesError, function));
#define OPERATION(interface, operation) all.push_back(Arguments::OfMember(#operation, &interface::operation));
