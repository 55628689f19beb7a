// From one text in our own grammar to an object.
#pragma once

#include <cstdint>
#include <string_view>

#include "forms/markup_guard.h"
#include "forms/text_scanner.h"
#include "objects/action.h"

namespace OrvPLC {

// What a parser makes of a text: the object, or none, and how many characters it took on the way.
struct ParsedText {
    ObjectPtr<TOrvAction> object;
    std::uint32_t consumed = 0;
};

ParsedText ParseActionText(std::u16string_view text, std::uint32_t expectedKind);

// One reading, front to back. The text outlives the parser.
class TOrvTextParser {
public:
    explicit TOrvTextParser(std::u16string_view text);

    ParsedText Read(std::uint32_t expectedKind);

private:
    struct Declared {
        std::size_t position = ParameterMap::kNotFound;
        bool spelt = false;  // as in the catalogue
    };
    Declared FindDeclared(const TOrvActionInternalInfo& entry, std::u16string_view name);
    void ReadParameter(TOrvAction& action, const FieldMatch& field);
    std::uint32_t Consumed() const { return static_cast<std::uint32_t>(scanner_.Place()); }

    MarkupGuard guard_;
    TextScanner scanner_;
    std::size_t next_ = 0;  // the declared parameter that is expected next
};

}  // namespace OrvPLC
