// From one text in our own grammar to an object.
#pragma once

#include <cstdint>
#include <string_view>

#include "forms/expression.h"
#include "forms/markup_guard.h"
#include "objects/action.h"

namespace OrvPLC {

// What a parser makes of a text: the object, or none, and how many characters it took on the way.
struct ParsedText {
    ObjectPtr<TOrvAction> object;
    std::uint32_t consumed = 0;
};

// The one entry to parsing. The grammar is that of the patterns, so a faster parser may stand in front of them here as
// long as it hands over to them whatever it is not sure of.
ParsedText ParseActionText(std::u16string_view text, std::uint32_t expectedKind);

// One reading by searches, front to back. The text outlives the parser.
class TOrvTextParser {
public:
    explicit TOrvTextParser(std::u16string_view text);

    ParsedText Read(std::uint32_t expectedKind);

private:
    struct Header {
        std::uint32_t kind = 0;
        std::u16string_view name;
    };
    bool ReadHeader(Header& header);
    bool ReadBody(TOrvAction& action);
    bool ReadParameter(TOrvAction& action);
    bool ReadClose();
    std::uint32_t Consumed() const;

    PatternSearch search_;
    MarkupGuard guard_;
    std::u16string_view remaining_;
    std::size_t totalLength_;
};

}  // namespace OrvPLC
