#include "bridge/hesk_text.h"

#include "bridge/action_text_parser.h"
#include "forms/technical_text_writer.h"

namespace HeskPLC {

void ConvertHeskTextToOrvText(std::u16string& text)
{
    const auto action = ActionTextParser(text).Parse();
    text = action ? OrvPLC::TechnicalText(*action) : std::u16string();
}

}  // namespace HeskPLC
