// What the generated create and decode functions are made of. Such a function names its action and passes its
// arguments on in the order of the catalogue's declaration; the walk over the declaration stands here, once, so that
// 866 functions are a few instructions each.
//
// An argument tells how it was passed. Its kind is told by the declaration, from which the generator took the C types.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "OrvActions/OrvTypes.h"
#include "platform/calling_function.h"

namespace OrvPLC {

enum class BuiltInAction : std::uint16_t;  // the place in the catalogue; built_in_actions.h has the names

class CreateArgument {
public:
    enum class Form : std::uint8_t { Number, Pointer, OptionalPointer, NarrowText };

    CreateArgument(OrvBool value) : number_(value), form_(Form::Number) {}
    CreateArgument(std::int32_t value) : number_(value), form_(Form::Number) {}
    CreateArgument(std::uint32_t value) : number_(static_cast<std::int32_t>(value)), form_(Form::Number) {}
    CreateArgument(const void* value) : pointer_(value), form_(Form::Pointer) {}
    CreateArgument(const OrvWChar* text) : pointer_(text), form_(Form::OptionalPointer) {}
    CreateArgument(const char* text) : pointer_(text), form_(Form::NarrowText) {}
    CreateArgument(const TOrvResultDataItem* items, std::uint32_t count)
        : pointer_(items), number_(static_cast<std::int32_t>(count)), form_(Form::Pointer)
    {}
    friend CreateArgument Optional(const void* value) { return {value, Form::OptionalPointer}; }

    bool IsUnset() const { return form_ >= Form::OptionalPointer && !pointer_; }
    bool IsNarrow() const { return form_ == Form::NarrowText; }
    const void* Pointer() const { return pointer_; }
    std::int32_t Number() const { return number_; }
    // A number that was passed by value, or through a pointer to T.
    template <class T>
    std::int32_t NumberAs() const
    {
        return form_ == Form::Number ? number_ : *static_cast<const T*>(pointer_);
    }

private:
    CreateArgument(const void* value, Form form) : pointer_(value), form_(form) {}

    const void* pointer_ = nullptr;
    std::int32_t number_ = 0;
    Form form_;
};
CreateArgument Optional(const void* value);

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
