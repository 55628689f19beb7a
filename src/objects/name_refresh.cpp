#include "objects/name_refresh.h"

#include "objects/action.h"
#include "objects/parameter_record.h"
#include "objects/roles.h"
#include "platform/foreign_call.h"

namespace OrvPLC {

namespace {

using Roles::Bit;

constexpr Roles::Views kPlainResources = Bit(ORV_VIEW_TimeRange) | Bit(ORV_VIEW_ABDestination) |
                                         Bit(ORV_VIEW_ABSchedule) | Bit(ORV_VIEW_ABSource) | Bit(ORV_VIEW_AILogicRule);
// These belong to a camera, so they are asked for together with it, after the walk.
constexpr Roles::Views kParameterSets =
    Bit(ORV_VIEW_ADParameterSet) | Bit(ORV_VIEW_VMDParameterSet) | Bit(ORV_VIEW_SVParameterSet);

class NameRefresh {
public:
    NameRefresh(OrvWord context, const TOrvActionInfoUpdateCallbacks& callbacks)
        : context_(context), callbacks_(callbacks)
    {}

    void Visit(const TOrvParameterInternalInfo& declared, TOrvParameter& value)
    {
        switch (declared.Type) {
        case ORV_KIND_Resource: VisitResource(declared.View, value); break;
        case ORV_KIND_EventType: VisitEventType(value); break;
        case ORV_KIND_MediaChannel: VisitChannel(declared.View, value); break;
        default: break;
        }
    }

    bool Finish()
    {
        // The channel has been refreshed by now, so the callback gets the id that the camera's own callback gave.
        if (parameterSet_ && channel_ && callbacks_.resourceOfChannel) {
            const auto channelId = static_cast<std::uint64_t>(channel_->Large());
            Refresh(*parameterSet_, &TOrvParameter::ReadResource, [&](TOrvResourceValue& record) {
                return callbacks_.resourceOfChannel(context_, parameterSetView_, &record, &channelId);
            });
        }
        return allKnown_;
    }

private:
    using ChannelCallback = decltype(TOrvActionInfoUpdateCallbacks::videoInput);

    // Asks for the value and stores the answer; the value keeps its enum. A value of another kind than declared is not
    // asked for.
    template <class Record, class Ask>
    void Refresh(TOrvParameter& value, bool (TOrvParameter::*read)(Record&) const, Ask&& ask)
    {
        Record record{};
        if (!(value.*read)(record)) return;
        if (!Platform::CallForeign([&] { return ask(record); })) {
            allKnown_ = false;
            return;
        }
        // The setters clear the enum.
        const std::uint32_t enumType = value.EnumType();
        SetFromRecord(value, record);
        value.SetKindAndEnum(value.Kind(), enumType);
    }

    void VisitResource(std::uint32_t view, TOrvParameter& value)
    {
        // A callback that the caller left out is not asked, and what it would know counts as known.
        if (Bit(view) & kParameterSets) {
            parameterSet_ = &value;
            parameterSetView_ = view;
        } else if (Bit(view) & kPlainResources && callbacks_.resource) {
            Refresh(value, &TOrvParameter::ReadResource,
                    [&](TOrvResourceValue& record) { return callbacks_.resource(context_, view, &record); });
        }
    }

    void VisitEventType(TOrvParameter& value)
    {
        if (!callbacks_.eventType) return;
        Refresh(value, &TOrvParameter::ReadEventType,
                [&](TOrvEventTypeValue& record) { return callbacks_.eventType(context_, &record); });
    }

    void VisitChannel(std::uint32_t view, TOrvParameter& value)
    {
        const ChannelCallback callback = CallbackFor(view);
        // Remembered even without a callback of its own: the parameter set asks for it.
        if (Bit(view) & Roles::kVideoInput) channel_ = &value;
        if (!callback) return;
        Refresh(value, &TOrvParameter::ReadMediaChannel,
                [&](TOrvChannelValue& record) { return callback(context_, &record); });
    }

    ChannelCallback CallbackFor(std::uint32_t view) const
    {
        if (Bit(view) & Roles::kVideoInput) return callbacks_.videoInput;
        switch (view) {
        case ORV_VIEW_VideoOutput: return callbacks_.videoOutput;
        case ORV_VIEW_InputContact: return callbacks_.inputContact;
        case ORV_VIEW_OutputContact: return callbacks_.outputContact;
        default: return nullptr;
        }
    }

    OrvWord context_;
    const TOrvActionInfoUpdateCallbacks& callbacks_;
    bool allKnown_ = true;
    TOrvParameter* parameterSet_ = nullptr;  // when there are several the last one counts
    std::uint32_t parameterSetView_ = 0;
    TOrvParameter* channel_ = nullptr;
};

}  // namespace

bool RefreshNames(TOrvAction& action, OrvWord context, const TOrvActionInfoUpdateCallbacks& callbacks)
{
    const TOrvActionInternalInfo* entry = action.Entry();
    if (!entry) return true;
    // Values keep their address while they are refreshed, so Finish may use those that the walk has met.
    NameRefresh refresh(context, callbacks);
    for (std::size_t position = 0; position < entry->Parameters.size(); ++position) {
        if (TOrvParameter* value = action.Parameters().FindDeclared(position)) {
            refresh.Visit(entry->Parameters[position], *value);
        }
    }
    return refresh.Finish();
}

}  // namespace OrvPLC
