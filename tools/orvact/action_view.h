// An action object as the tool shows it.
#pragma once

#include <OrvActions.hpp>
#include <string>
#include <vector>

#include "catalogue_view.h"

using orv::Action;

struct StoredParameter {
    std::string name;
    std::string type;  // as declared, with a remark if the value is stored differently
    std::string view;  // "" for none
    std::string value;
};

// The parameters in the order of the technical text: the declared ones in the order of the declaration, then the others
// by name.
std::vector<StoredParameter> ParametersOf(const Action& action, const ActionView* declared);

std::string ValueText(const Action& action, const orv::CarriedParameter& held);

// For people, without control characters; "" when a value has no text.
std::string ShownText(const Action& action, bool plain = false);

std::string DateText(TUlmoDateTime date);
std::string RealText(double number);  // enough digits to tell it from every other number

// Reads one action. `consumed` is how far reading came; `error` is the reason of a failure, if the library gives one.
Action ReadText(const std::u16string& text, std::size_t& consumed, std::string& error);

// An action with all its parameters set to samples.
Action ExampleAction(const ActionView& action);
// A technical text of that, "" when the text would not read back as the same action.
std::string ExampleText(const ActionView& action);
