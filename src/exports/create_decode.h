// What the generated create and decode functions are made of. Such a function names its action and passes its
// arguments on in the order of the catalogue's declaration; the walk over them stands here, once, so that 866 functions
// are a few instructions each.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "OrvActions/OrvTypes.h"
#include "platform/calling_function.h"

namespace OrvPLC {

enum class BuiltInAction : std::uint16_t;  // the place in the catalogue; built_in_actions.h has the names

// The kind of a parameter that is passed by a pointer to T. A rectangle is one more 64-bit integer, so it has to say
// what it is.
template <class T>
extern const std::uint8_t kKindBehind;
template <>
inline constexpr std::uint8_t kKindBehind<OrvBool> = ORV_KIND_Boolean;
template <>
inline constexpr std::uint8_t kKindBehind<std::int32_t> = ORV_KIND_Numeric32Bit;
template <>
inline constexpr std::uint8_t kKindBehind<std::uint32_t> = ORV_KIND_Numeric32Bit;
template <>
inline constexpr std::uint8_t kKindBehind<std::int64_t> = ORV_KIND_Numeric64Bit;
template <>
inline constexpr std::uint8_t kKindBehind<double> = ORV_KIND_NumericDouble;
template <>
inline constexpr std::uint8_t kKindBehind<TUlmoDateTime> = ORV_KIND_DateTime;
template <>
inline constexpr std::uint8_t kKindBehind<TOrvGuid> = ORV_KIND_Guid;
template <>
inline constexpr std::uint8_t kKindBehind<TOrvEventTypeValue> = ORV_KIND_EventType;
template <>
inline constexpr std::uint8_t kKindBehind<TOrvChannelValue> = ORV_KIND_MediaChannel;
template <>
inline constexpr std::uint8_t kKindBehind<TOrvResourceValue> = ORV_KIND_Resource;

// An argument tells how it was passed, and of which kind and enum its parameter is: most of it by its C type, so that
// creating an action need not read the declaration.
class CreateArgument {
public:
    enum class Form : std::uint8_t { Number, Pointer, OptionalPointer, NarrowText };

    CreateArgument(OrvBool value) : number_(value), kind_(ORV_KIND_Boolean), form_(Form::Number) {}
    CreateArgument(std::int32_t value) : number_(value), kind_(ORV_KIND_Numeric32Bit), form_(Form::Number) {}
    CreateArgument(std::uint32_t value, std::uint32_t enumType)
        : number_(static_cast<std::int32_t>(value)),
          enumOrCount_(enumType),
          kind_(ORV_KIND_Numeric32Bit),
          form_(Form::Number)
    {}
    template <class T>
    CreateArgument(const T* value) : CreateArgument(value, kKindBehind<T>, Form::Pointer)
    {}
    CreateArgument(const OrvWChar* text) : CreateArgument(text, ORV_KIND_String, Form::OptionalPointer) {}
    CreateArgument(const char* text) : CreateArgument(text, ORV_KIND_String, Form::NarrowText) {}
    CreateArgument(const TOrvResultDataItem* items, std::uint32_t count)
        : CreateArgument(items, ORV_KIND_ResultDataSet, Form::Pointer, count)
    {}
    CreateArgument(const void* value, std::uint8_t kind, Form form, std::uint32_t enumOrCount = 0)
        : pointer_(value), enumOrCount_(enumOrCount), kind_(kind), form_(form)
    {}

    bool IsUnset() const { return form_ >= Form::OptionalPointer && !pointer_; }
    bool IsNarrow() const { return form_ == Form::NarrowText; }
    std::uint32_t Kind() const { return kind_; }
    std::uint32_t EnumType() const { return enumOrCount_; }  // of a number of 32 bits
    std::uint32_t Count() const { return enumOrCount_; }     // of items
    const void* Pointer() const { return pointer_; }
    // A number that was passed by value, or through a pointer to T.
    template <class T>
    std::int32_t NumberAs() const
    {
        return form_ == Form::Number ? number_ : *static_cast<const T*>(pointer_);
    }

private:
    union {
        const void* pointer_;
        std::int32_t number_;
    };
    std::uint32_t enumOrCount_ = 0;  // the enum of a number, the count of items
    std::uint8_t kind_;              // ORV_KIND_...
    Form form_;
};

// A pointer that is null where the parameter is left out.
template <class T>
CreateArgument Optional(const T* value, std::uint32_t enumType = 0)
{
    return {value, kKindBehind<T>, CreateArgument::Form::OptionalPointer, enumType};
}
inline CreateArgument Rect(const std::int64_t* value)
{
    return {value, ORV_KIND_Rect, CreateArgument::Form::Pointer};
}
inline CreateArgument OptionalRect(const std::int64_t* value)
{
    return {value, ORV_KIND_Rect, CreateArgument::Form::OptionalPointer};
}

// The two outputs of a result data set, which is one parameter.
struct ResultDataOutput {
    const TOrvResultDataItem** items;
    std::uint32_t* count;
};

class DecodeOutput {
public:
    enum class Form : std::uint8_t { Value, PointerIntoValue, NarrowText };

    DecodeOutput(void* value) : target_(value), form_(Form::Value) {}
    template <class T>
    DecodeOutput(const T** pointer) : target_(pointer), form_(Form::PointerIntoValue)
    {}
    DecodeOutput(const char** text) : target_(text), form_(Form::NarrowText) {}
    // Refers to a temporary, which lives as long as the call.
    DecodeOutput(const ResultDataOutput& outputs) : target_(const_cast<ResultDataOutput*>(&outputs)), form_(Form::Value)
    {}

    Form GetForm() const { return form_; }
    // What the output points at.
    template <class T>
    T& Target() const
    {
        return *static_cast<T*>(target_);
    }

private:
    void* target_;
    Form form_;
};

// A new action with the arguments that are set; null with a last error on failure.
TOrvHandle CreateAction(BuiltInAction action, std::initializer_list<CreateArgument> arguments) noexcept;

// Reads the first parameters of an action. Any other action is refused before an output is written.
OrvBool DecodeAction(TOrvHandle handle, BuiltInAction action, std::initializer_list<DecodeOutput> outputs,
                     const char* function = ORV_CALLING_FUNCTION) noexcept;

}  // namespace OrvPLC
