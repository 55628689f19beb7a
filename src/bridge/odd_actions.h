// The few actions that their field lists alone do not convert.
#pragma once

#include "bridge/converters.h"
#include "objects/action.h"

namespace HeskPLC {

class ActionTextParser;
class ActionTextWriter;

struct OddAction {
    std::u16string_view name;
    // Replace reading and writing by the field list; null if the field list does it.
    void (*read)(ActionTextParser& parser, OrvPLC::TOrvAction& action, const Converter& converter);
    void (*write)(ActionTextWriter& writer, OrvPLC::TOrvAction& action, const Converter& converter);
};

const OddAction* FindOddAction(const Converter& converter);  // null for most

}  // namespace HeskPLC
