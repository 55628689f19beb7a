// Plays the bridge to the sibling product while it lives.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "forms/sibling.h"

namespace OrvPLC {

class FakeSibling final : public SiblingConverter {
public:
    explicit FakeSibling(std::optional<std::u16string> answer) : answer_(std::move(answer)), before_(SetSibling(this))
    {}
    FakeSibling(const FakeSibling&) = delete;
    FakeSibling& operator=(const FakeSibling&) = delete;
    ~FakeSibling() { SetSibling(before_); }

    bool ConvertText(std::u16string_view text, std::u16string& converted) override
    {
        seenText = text;
        return Answer(converted);
    }
    bool ConvertNarrowText(std::string_view utf8, std::u16string& converted) override
    {
        seenNarrow = utf8;
        return Answer(converted);
    }
    bool ConvertBinary(std::span<const std::byte> buffer, std::uint32_t kind, std::u16string& converted) override
    {
        seenBuffer = {buffer.begin(), buffer.end()};
        seenKind = kind;
        return Answer(converted);
    }
    bool ConvertEvent(const TOrvEventData& record, std::u16string& converted) override
    {
        seenCode = record.code;
        return Answer(converted);
    }

    std::u16string seenText;
    std::string seenNarrow;
    std::vector<std::byte> seenBuffer;
    std::uint32_t seenKind = 0;
    std::uint32_t seenCode = 0;

private:
    bool Answer(std::u16string& converted) const
    {
        if (answer_) converted = *answer_;
        return answer_.has_value();
    }

    std::optional<std::u16string> answer_;
    SiblingConverter* before_;
};

}  // namespace OrvPLC
