// An action out of text, for tests that need one.
#pragma once

#include <string_view>

#include "forms/text_reader.h"

namespace OrvPLC {

inline ObjectPtr<TOrvAction> Read(std::u16string_view text)
{
    return ObjectPtr<TOrvAction>(ReadActionText(text, ORV_EXPECT_ANY, false).object);
}

}  // namespace OrvPLC
