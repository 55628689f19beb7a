// A pattern over actions: an action's name and the parameter values that a concrete action must have.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "objects/action.h"

namespace OrvPLC {

// The lower-cased name under which the forms carry the description.
inline constexpr std::u16string_view kDescriptionKey = u"comment";

class TOrvMatchAction final : public TOrvAction {
public:
    static TOrvMatchAction* Create(std::u16string_view name, std::uint32_t count = 1);
    static TOrvMatchAction* CreateWithRoom(std::u16string_view name, std::size_t textBytes, std::uint32_t count = 1);
    // A match action with the source's name and a copy of its parameters.
    static TOrvMatchAction* CreateFrom(const TOrvAction& source, std::uint32_t count);

    bool ORV_CALL Matches(ITalvecAction* action) override;
    ITalvecAction* ORV_CALL CreateActionFromTemplate(ITalvecAction* templateAction) override;

    TOrvMessage* Clone() const override;
    bool Equals(const TOrvMessage& other) const override;
    const TOrvParameter* DescriptionParameter() const override { return &description_; }
    std::u16string_view DescriptionName() const override { return descriptionName_.view(); }
    TOrvParameter& Description() noexcept { return description_; }
    void TakeDescription(SharedName name, TOrvParameter value)
    {
        description_ = std::move(value);
        descriptionName_ = std::move(name);
    }
    const char* NarrowDescription();  // in the ANSI code page, made afresh at each call

private:
    TOrvMatchAction(SharedName name, std::uint32_t count, const TOrvActionInternalInfo* entry, const Block& block);
    static TOrvMatchAction* Make(SharedName name, std::uint32_t count, const TOrvActionInternalInfo* entry,
                                 std::size_t textBytes);
    bool Supports(const TOrvGuid& id) const override;
    // Deliberately declined, although the object could have a marshaler: hosts rely on the answer.
    bool OffersMarshaler() const override { return false; }

    TOrvParameter description_;  // outside the map
    SharedName descriptionName_ = SharedName::Shared(u"Comment");
    std::string narrowDescription_;
};

}  // namespace OrvPLC
