// An action object as the tool shows it.
#pragma once

#include <OrvActions.h>

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue_view.h"

// Owns one handle.
class Action {
public:
    explicit Action(TOrvHandle handle) : handle_(handle) {}
    Action(const Action&) = delete;
    Action& operator=(const Action&) = delete;
    ~Action() { OrvAct_CloseHandle(handle_); }

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

std::u16string TextOf(const Action& action, bool plain);
std::string MatchDescription(const Action& matchAction);

// Reads one action; `consumed` tells how far.
TOrvHandle ReadText(const std::u16string& text, std::uint32_t& consumed);

// A technical text of an action with all its parameters set, "" when the text would not read back as the same action.
std::string ExampleText(const ActionView& action);
