// The C++ wrapper of OrvActions.h: header only, C++17, the same source on every system.
//
//     #include <OrvActions.hpp>
//     #include <iostream>
//
//     int main()
//     {
//         orv::Action action = orv::Action::Parse("PanLeft (Camera: 7, Speed: 3)");
//         action.Set("Speed", action.Get<std::int32_t>("Speed").value_or(0) + 1);
//         std::cout << action.TextUtf8() << '\n';
//     }
//
//  - An orv::Action owns one reference to its object and gives it up at its end. It can be moved; to copy it call
//    Clone() or Duplicate(). One that was made by default or moved from is empty: it may only be assigned to or tested.
//  - Texts are std::u16string and std::u16string_view. Every text argument may also be UTF-8 (literals, std::string),
//    and on Windows wide text. Names are found in any case.
//  - Failures are thrown as orv::Error, a lack of memory as std::bad_alloc. An absent parameter is no failure: reads
//    answer std::optional.
//  - One action is for one thread at a time, for reads as well; different actions are independent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "OrvActions/Cpp/Catalogue.hpp"
#include "OrvActions/Cpp/Events.hpp"
#include "OrvActions/Cpp/Sinks.hpp"
#include "OrvActions/Cpp/Text.hpp"
#include "OrvActions/Cpp/Values.hpp"

namespace orv {

// A parameter that an action carries.
struct CarriedParameter {
    std::u16string name;     // in the case in which it was set
    std::uint32_t kind;      // ORV_KIND_...
    std::uint32_t enumType;  // ORV_ENUM_..., 0 for none
};

// The same with its value.
struct ParameterWithValue : CarriedParameter {
    Value value;
};

namespace detail {

// Runs a store into a buffer: most results fit the first one, others are asked for again at their size. That of a text
// counts its terminator.
template <class String, class Unit, std::uint32_t Terminator = 1, class Store>
String StoredResult(Store store)
{
    Unit first[256];
    std::uint32_t required = 0;
    const auto result = [&](const Unit* text) {
        return String(reinterpret_cast<const typename String::value_type*>(text), required - Terminator);
    };
    if (store(first, std::uint32_t{256}, &required)) return result(first);
    if (required <= 256) throw Error::Last();  // a failure of its own, not a text that is too long
    std::vector<Unit> buffer(required);
    Check(store(buffer.data(), required, &required));
    return result(buffer.data());
}

// A new system string that a function has stored, as a text.
template <class Store>
std::u16string TakenText(Store store)
{
    OrvBStr text = nullptr;
    const bool stored = store(&text);
    const std::u16string copy(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
    SysFreeString(text);
    Check(stored);
    return copy;
}

}  // namespace detail

class Action {
public:
    // ---- life -----------------------------------------------------------------------------------------------------

    Action() noexcept = default;
    // Takes over the reference that a function of OrvActions.h has handed out; null gives an empty action.
    explicit Action(TOrvHandle handle) noexcept : handle_(handle) {}
    Action(Action&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Action& operator=(Action&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Action()
    {
        if (handle_) OrvAct_CloseHandle(handle_);
    }

    // A new action without parameters: by a name, known to the catalogue or not, or by a code (ORV_ACTION_...). An
    // unknown code throws.
    static Action Named(const TextArg& name) { return Made(Talvec_Action_CreateActionByName(name.c_str())); }
    static Action OfCode(std::uint32_t code)
    {
        return Made(Talvec_Action_CreateActionByCode(code), "The catalogue does not know this action.");
    }

    // The action that a technical text begins with. TryParse answers an empty action for a text that holds none, and
    // tells how many UTF-16 units it has read. Both throw for a text that cannot be read at all.
    static Action Parse(const TextArg& text)
    {
        std::size_t consumed = 0;
        Action action = TryParse(text, &consumed);
        if (!action) throw Error::LastAt(consumed, "The text holds no action.");
        return action;
    }
    static Action TryParse(const TextArg& text, std::size_t* consumed = nullptr)
    {
        std::uint32_t units = 0;
        Action action(OrvAct_CreateFromTextBufferW(text.c_str(), text.size(), ORV_EXPECT_ANY, 0, &units));
        TOrvLastErrorInfo info{};
        if (!action && OrvAct_GetLastError(&info)) throw Error::LastAt(units, "The text cannot be read.");
        if (consumed) *consumed = units;
        return action;
    }

    // The action that a buffer with the binary form begins with. TryFromBinary answers an empty action for a buffer
    // that holds none, and tells how many bytes it has read; OrvAct_CreateFromBinBuffer says how that number shows a
    // buffer that ended too early. FromBinary does not throw for such a buffer.
    static Action FromBinary(std::string_view bytes)
    {
        std::size_t consumed = 0;
        Action action = TryFromBinary(bytes, &consumed);
        if (!action) throw Error::LastAt(consumed, "The buffer holds no action.");
        return action;
    }
    static Action TryFromBinary(std::string_view bytes, std::size_t* consumed = nullptr)
    {
        std::uint32_t count = 0;
        Action action(OrvAct_CreateFromBinBuffer(bytes.data(), static_cast<std::uint32_t>(bytes.size()), ORV_EXPECT_ANY,
                                                 &count));
        if (consumed) *consumed = count;
        return action;
    }

    // The action of an event record: from its image, else from its columns.
    static Action Restored(const TOrvEventData& record)
    {
        return Made(OrvAct_RestoreActionFromEventData(&record), "The record cannot be read.");
    }

    // An independent object with the same content.
    Action Clone() const
    {
        TOrvHandle clone = nullptr;
        detail::Check(OrvAct_CloneHandle(handle_, &clone));
        return Action(clone);
    }
    // A second owner of the same object.
    Action Duplicate() const
    {
        detail::Check(OrvAct_DuplicateHandle(handle_));
        return Action(handle_);
    }
    // A match action with the same name and a copy of the parameters.
    Action ToMatchAction() const
    {
        TOrvHandle match = nullptr;
        detail::Check(OrvAct_CreateMatchActionFromTemplate(handle_, &match));
        return Action(match);
    }

    explicit operator bool() const noexcept { return handle_ != nullptr; }
    TOrvHandle Handle() const noexcept { return handle_; }                    // borrowed
    TOrvHandle Detach() noexcept { return std::exchange(handle_, nullptr); }  // the caller closes it

    // Same name and same parameters, values compared exactly; an action never equals a match action.
    friend bool operator==(const Action& a, const Action& b)
    {
        OrvBool equal = 0;
        detail::Check(OrvAct_Equal(a.handle_, b.handle_, &equal));
        return equal != 0;
    }
    friend bool operator!=(const Action& a, const Action& b) { return !(a == b); }

    // ---- what it is -----------------------------------------------------------------------------------------------

    // The name in the catalogue's spelling, and the plain name, which is "" for an unknown action. Borrowed.
    std::u16string_view Name() const { return View(Interface()->GetActionName()); }
    std::u16string_view PlainName() const { return View(Interface()->GetActionPlainName()); }
    std::uint32_t Code() const { return Interface()->GetActionCode(); }            // ORV_ACTION_..., 0 when unknown
    std::uint32_t ClassCode() const { return Interface()->GetActionClassCode(); }  // ORV_CLASS_...
    std::u16string_view ClassName() const { return View(Interface()->GetActionClassName()); }
    bool IsMatchAction() const { return Interface()->GetMessageKind() == ORV_MESSAGE_MATCH_ACTION; }

    // ---- parameters -----------------------------------------------------------------------------------------------

    // T is one of the types in OrvActions/Cpp/Values.hpp. Empty for a parameter that is absent or whose value does not
    // convert to T.
    template <class T>
    std::optional<T> Get(const TextArg& name) const
    {
        return detail::ValueOf<T>::Read(handle_, name);
    }

    // Stores a parameter of the kind that belongs to T, in place of whatever was there.
    template <class T>
    void Set(const TextArg& name, const T& value)
    {
        detail::Record record;
        detail::ValueOf<std::decay_t<const T&>>::Write(record, value);
        detail::Check(Talvec_Action_SetParameterByName(handle_, name.c_str(), record.get()));
    }

    void Set(const TextArg& name, const ResultData& value) { detail::ValueOf<ResultData>::Store(handle_, name, value); }
    // A result data set from its text, as JSON shows it: "1 2 3 4 5 'name'".
    void SetResultText(const TextArg& name, const TextArg& text)
    {
        detail::Record record;
        record.SetText(text);
        record->kind = ORV_KIND_ResultDataSet;
        detail::Check(Talvec_Action_SetParameterByName(handle_, name.c_str(), record.get()));
    }
    // A value of any type; an empty one takes the parameter away.
    void Set(const TextArg& name, const Value& value)
    {
        std::visit(
            [&](const auto& given) {
                if constexpr (std::is_same_v<std::decay_t<decltype(given)>, std::monostate>) {
                    Remove(name);
                } else {
                    Set(name, given);
                }
            },
            value);
    }

    bool Has(const TextArg& name) const { return Interface()->HasParameter(name.c_str()); }
    void Remove(const TextArg& name) { Interface()->RemoveParameter(name.c_str()); }
    // ORV_KIND_... and ORV_ENUM_...; 0 for an absent parameter.
    std::uint32_t KindOf(const TextArg& name) const { return Interface()->GetParameterType(name.c_str()); }
    std::uint32_t EnumOf(const TextArg& name) const { return Interface()->GetParameterEnum(name.c_str()); }

    // The value as the library writes it as a text. Empty for an absent parameter and for a value without a text, such
    // as a date whose local time lies before 1601.
    std::optional<std::u16string> TextOfValue(const TextArg& name) const
    {
        detail::Record record;
        if (!Interface()->GetString(name.c_str(), &record->text) || !record->text) return std::nullopt;
        return std::u16string(record.Text());
    }

    // The parameters of the action, in order of the lower-cased names.
    std::vector<CarriedParameter> Parameters() const
    {
        std::vector<CarriedParameter> parameters;
        ForEachParameter([&](std::u16string_view name, std::uint32_t kind, std::uint32_t enumType) {
            parameters.push_back({std::u16string(name), kind, enumType});
        });
        return parameters;
    }
    // The same with values: for (const orv::ParameterWithValue& parameter : action.Values()) ...
    std::vector<ParameterWithValue> Values() const
    {
        std::vector<ParameterWithValue> values;
        for (CarriedParameter& parameter : Parameters()) {
            Value value = detail::ValueOfKind(handle_, parameter.name, parameter.kind, parameter.enumType);
            values.push_back({std::move(parameter), std::move(value)});
        }
        return values;
    }
    // Calls with name, kind and enum of each, without a copy. The action must not change meanwhile.
    template <class Call>
    void ForEachParameter(Call&& call) const
    {
        detail::Through<detail::ParameterSink>(
            call, [this](ITalvecParameterEnumerator* sink) { Interface()->EnumerateParameters(sink); });
    }

    // ---- properties, see OrvProperties.h ----------------------------------------------------------------------------

    // The text of a property; empty if the action lacks it. The text is made inside the parameter, so this counts as a
    // write.
    std::optional<std::u16string> Property(const TextArg& key)
    {
        const OrvWChar* value = nullptr;
        detail::Check(OrvAct_GetProperty(handle_, key.c_str(), &value));
        return value ? std::optional<std::u16string>(View(value)) : std::nullopt;
    }
    void SetProperty(const TextArg& key, const TextArg& value)
    {
        detail::Check(OrvAct_SetProperty(handle_, key.c_str(), value.c_str()));
    }

    // ---- parameters by role, whatever they are called ---------------------------------------------------------------

    std::optional<Channel> VideoInput() const { return Role(OrvAct_GetVideoInput); }
    std::optional<Channel> VideoOutput() const { return Role(OrvAct_GetVideoOutput); }
    std::optional<Channel> InputContact() const { return Role(OrvAct_GetInputContact); }
    std::optional<Channel> OutputContact() const { return Role(OrvAct_GetOutputContact); }
    // These throw when the action has no such role.
    void SetVideoInput(const Channel& channel) { SetRole(OrvAct_SetVideoInput, channel); }
    void SetVideoOutput(const Channel& channel) { SetRole(OrvAct_SetVideoOutput, channel); }
    void SetInputContact(const Channel& channel) { SetRole(OrvAct_SetInputContact, channel); }
    void SetOutputContact(const Channel& channel) { SetRole(OrvAct_SetOutputContact, channel); }

    // ---- match actions --------------------------------------------------------------------------------------------

    // Whether an action is one of those that this match action describes.
    bool Matches(const Action& action) const
    {
        OrvBool matches = 0;
        detail::Check(OrvMatchAct_Matches(handle_, action.handle_, &matches));
        return matches != 0;
    }
    // What people call the match action; "" for an action that is no match action.
    std::u16string Description() const
    {
        const OrvWChar* text = nullptr;
        detail::Check(OrvMatchAct_GetDescriptionW(handle_, &text));
        return std::u16string(View(text));
    }
    void SetDescription(const TextArg& text) { detail::Check(OrvMatchAct_SetDescriptionW(handle_, text.c_str())); }

    // ---- forms ----------------------------------------------------------------------------------------------------

    // Technical text, which Parse reads back, and plain text for people.
    std::u16string Text() const { return Stored(false); }
    std::u16string PlainText() const { return Stored(true); }
    std::string TextUtf8() const { return StoredUtf8(false); }
    std::string PlainTextUtf8() const { return StoredUtf8(true); }

    // The binary form, bytes that FromBinary reads back.
    std::string Binary() const
    {
        return detail::StoredResult<std::string, char, 0>(
            [this](char* buffer, std::uint32_t size, std::uint32_t* required) {
                return OrvAct_StoreToBinBuffer(handle_, buffer, size, required);
            });
    }

    // JSON: a document {"action":{...}}, or the member alone when not wrapped. Parameters with a priority above the
    // limit are left out; without one the process-wide level holds. kEveryPriority leaves out none.
    static constexpr std::uint32_t kEveryPriority = 0xFFFFFFFF;
    std::u16string Json(bool wrap = true, std::optional<std::uint32_t> limit = std::nullopt) const
    {
        return detail::StoredResult<std::u16string, OrvWChar>(
            [&](OrvWChar* buffer, std::uint32_t size, std::uint32_t* required) {
                return OrvAct_StoreToJson(handle_, buffer, size, required, wrap, limit ? &*limit : nullptr);
            });
    }

    // <properties>...</properties>, and the flat list <action ...> <property ...>.
    std::u16string Properties() const
    {
        return detail::TakenText([this](OrvBStr* text) { return OrvAct_GetProperties(handle_, text); });
    }
    std::u16string FlatXml() const
    {
        return detail::TakenText([this](OrvBStr* text) { return OrvAct_GetXML(handle_, text); });
    }

    // The table of the interface, for what has no name here. Borrowed.
    ITalvecMatchAction* Interface() const { return OrvInterfaceOf(handle_); }

private:
    static Action Made(TOrvHandle handle, const char* otherwise = "The action could not be made.")
    {
        if (!handle) throw Error::Last(otherwise);
        return Action(handle);
    }

    std::optional<Channel> Role(OrvBool (*get)(TOrvHandle, const TOrvChannelValue**)) const
    {
        const TOrvChannelValue* channel = nullptr;
        detail::Check(get(handle_, &channel));
        return channel ? std::optional<Channel>(detail::ValueOf<Channel>::From(*channel)) : std::nullopt;
    }
    void SetRole(OrvBool (*set)(TOrvHandle, const TOrvChannelValue*), const Channel& channel)
    {
        const TOrvChannelValue plain = detail::ValueOf<Channel>::ToPlain(channel);
        detail::Check(set(handle_, &plain));
    }

    std::u16string Stored(bool plain) const
    {
        return detail::StoredResult<std::u16string, OrvWChar>(
            [&](OrvWChar* buffer, std::uint32_t size, std::uint32_t* required) {
                return OrvAct_StoreToTextBufferW(handle_, buffer, size, plain, 0, required);
            });
    }
    std::string StoredUtf8(bool plain) const
    {
        return detail::StoredResult<std::string, char>([&](char* buffer, std::uint32_t size, std::uint32_t* required) {
            return OrvAct_StoreToTextBufferA(handle_, buffer, size, plain, 1, required);
        });
    }

    TOrvHandle handle_ = nullptr;
};

// Text of the sibling product as action text, and the other way. Both throw for a text without a counterpart, with the
// code ORV_ERROR.
inline std::u16string FromSiblingText(const TextArg& text)
{
    return detail::TakenText([&](OrvBStr* converted) {
        return Talvec_Action_ConvertHeskActionTextToOrvActionText(text.c_str(), converted);
    });
}
inline std::u16string ToSiblingText(const TextArg& text)
{
    return detail::TakenText([&](OrvBStr* converted) {
        return Talvec_Action_ConvertOrvActionTextToHeskActionText(text.c_str(), converted);
    });
}

}  // namespace orv

#include "OrvActions/Cpp/RuleSet.hpp"
