// An action object as the tool shows it.
#pragma once

#include <OrvActions.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "catalogue_view.h"

// Owns one handle.
class Action {
public:
    explicit Action(TOrvHandle handle) : handle_(handle) {}
    Action(Action&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Action& operator=(Action&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~Action()
    {
        if (handle_) OrvAct_CloseHandle(handle_);  // a close, even of nothing, clears the last error
    }

    explicit operator bool() const { return handle_ != nullptr; }
    TOrvHandle get() const { return handle_; }
    ITalvecAction* operator->() const { return OrvInterfaceOf(handle_); }

private:
    TOrvHandle handle_;
};

struct StoredParameter {
    std::string name;
    std::string type;  // as declared, with a remark where the value is stored otherwise
    std::string view;  // "" for none
    std::string value;
};

// The parameters in the order of the technical text: those that the catalogue declares as declared, then the others by
// name.
std::vector<StoredParameter> ParametersOf(const Action& action, const ActionView* declared);

// A parameter as the object holds it, in order of the lower-cased names.
struct HeldParameter {
    std::u16string name;
    std::uint32_t kind;
    std::uint32_t enumType;

    const OrvWChar* Name() const { return reinterpret_cast<const OrvWChar*>(name.c_str()); }
};
std::vector<HeldParameter> HeldParameters(const Action& action);
std::string ValueText(const Action& action, const HeldParameter& held);

std::string GuidText(const TOrvGuid& guid);
std::string DateText(TUlmoDateTime date);
std::string RealText(double number);  // as many digits as tell it from every other

bool SameAction(const Action& a, const Action& b);

std::u16string TextOf(const Action& action, bool plain);
std::string MatchDescription(const Action& matchAction);

// Reads one action; `consumed` tells how far.
TOrvHandle ReadText(const std::u16string& text, std::uint32_t& consumed);

// A technical text of an action with all its parameters set, "" when the text would not read back as the same action.
std::string ExampleText(const ActionView& action);
