#include "events/event_description.h"

#include "catalogue/settings.h"
#include "events/event_restore.h"
#include "forms/plain_text_writer.h"
#include "platform/foreign_call.h"

namespace OrvPLC {

namespace {

class EventDescriber {
public:
    EventDescriber(const TOrvAction& action, const TOrvEventDescriptionCallbacks& callbacks, std::uint32_t level)
        : action_(action), callbacks_(callbacks), level_(level)
    {}

    void Run()
    {
        writer_.WriteHeader(action_);
        const std::size_t headerLength = writer_.Text().size();
        action_.Parameters().ForEachDeclaredFirst(
            [this](std::u16string_view name, const TOrvParameter& value, std::size_t position) {
                Visit(name, value, position);
            });
        Finish(headerLength);
    }

private:
    // What the catalogue does not declare is in the final text only, and under the process-wide level.
    void Visit(std::u16string_view name, const TOrvParameter& value, std::size_t position)
    {
        if (position == ParameterMap::kNotFound) {
            const auto* general = Catalogue().FindGeneralParameter(name);
            writer_.WriteParameter(name, value, general, Settings::PriorityLevel);
            return;
        }
        const TOrvParameterInternalInfo& declared = action_.Entry()->Parameters[position];
        const auto shown = writer_.WriteParameter(name, value, &declared, level_);
        // What has no label is in the whole text all the same.
        if (!shown || *shown->label == 0) return;
        const std::u16string text(shown->value);
        // Hidden parameters get no number: those that are told are numbered without a gap.
        callbacks_.Call(next_++, shown->label, text.c_str(), declared.Priority);
    }

    void Finish(std::size_t headerLength)
    {
        const std::u16string_view all = writer_.Text();
        const std::u16string label(all.substr(0, headerLength - 1));  // without the mark that ends the header
        std::u16string_view text = all.substr(headerLength);
        if (text.starts_with(u' ')) text.remove_prefix(1);
        // The whole text comes last, under an index that no parameter has.
        callbacks_.Call(-1, label.c_str(), std::u16string(text).c_str(), 0);
    }

    const TOrvAction& action_;
    const TOrvEventDescriptionCallbacks& callbacks_;
    std::uint32_t level_;
    TOrvPlainTextWriter writer_;
    std::int32_t next_ = 0;
};

}  // namespace

void TOrvEventDescriptionCallbacks::Call(std::int32_t index, const char16_t* label, const char16_t* value,
                                         std::uint32_t priority) const
{
    Platform::CallForeign([&, this] {
        if (plain) {
            plain(context, index, Boundary(label), Boundary(value));
        } else if (extended) {
            extended(context, index, Boundary(label), Boundary(value), priority);
        }
    });
}

void DescribeEvent(const TOrvEventData& record, const TOrvEventDescriptionCallbacks& callbacks, std::uint32_t level)
{
    const ObjectPtr<TOrvAction> action(RestoreForDescription(record));
    if (action) EventDescriber(*action, callbacks, level).Run();
}

}  // namespace OrvPLC
