// Plain text: the form for people. Plain names of the current text set, enum values as words, parameters above the
// priority level hidden; there is no way back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "objects/action.h"

namespace OrvPLC {

class TOrvPlainTextWriter {
public:
    void Write(const TOrvAction& action);
    std::u16string Take() { return std::move(output_); }

    // The same in steps, for callers that need the pieces: the header with its ";", then each parameter.
    struct Shown {
        const char16_t* label;      // zero-ended, until the next parameter
        std::u16string_view value;  // in the text, until the next write
    };
    void WriteHeader(const TOrvAction& action);
    // `info` is what the catalogue knows of the parameter, null for nothing. No result for one that its priority hides.
    std::optional<Shown> WriteParameter(std::u16string_view name, const TOrvParameter& parameter,
                                        const TOrvParameterInternalInfo* info, std::uint32_t level);
    std::u16string_view Text() const { return output_; }

private:
    void WriteValue(const TOrvParameter& value);
    void WriteNumber(const TOrvParameter& value);
    void WriteMediaChannel(const TOrvParameter& value);
    void WriteResource(const TOrvParameter& value);
    void WriteRect(std::int64_t packed);
    bool WriteEnumName(std::uint32_t enumType, std::uint32_t value);

    std::u16string output_;
    // Of display texts that somebody has written.
    std::u16string label_;
    std::u16string copy_;
};

// The text of any object; empty for a generic action. Raises when a date cannot be shown.
std::u16string PlainText(const TOrvMessage& message);

}  // namespace OrvPLC
