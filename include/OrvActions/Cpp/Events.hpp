// Event records in the C++ wrapper. Part of OrvActions.hpp; include that.
//
//     const std::string image = action.Binary();
//     orv::EventRecord record(action.Handle());
//     record.SetImage(image);
//     StoreInMyDatabase(*record.get());
//     orv::Action back = orv::Action::Restored(*record.get());
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>

#include "OrvActions/Cpp/Text.hpp"

namespace orv {

// A record filled from an action. Its columns lead into the action's parameters: it is valid as long as the action
// lives and none of them changes or is read as text. Make the image before the record, as above.
class EventRecord {
public:
    // Converts values in the action, so it counts as a write.
    explicit EventRecord(TOrvHandle action)
    {
        record_.size = sizeof record_;
        std::uint8_t unused = 0;
        detail::Check(OrvAct_GetActionEventData(action, &record_, &unused));
    }

    // The binary form of the action, borrowed as long as the record is used.
    void SetImage(std::string_view image)
    {
        record_.image = image.data();
        record_.imageSize = image.size();
    }

    const TOrvEventData* get() const { return &record_; }
    const TOrvEventData* operator->() const { return &record_; }

private:
    TOrvEventData record_{};
};

// A line of the description of a record. The texts are valid until the callable returns.
struct EventLine {
    std::u16string_view label;
    std::u16string_view value;
    std::uint32_t priority;
    bool whole;  // the last one: the name of the event, and the whole plain text after it
};

// Describes a record for people: one call for each parameter that the catalogue declares and the record holds, then one
// for the whole. Parameters with a priority above the level are left out; without one the process-wide level holds.
// What the callable throws ends the walk and goes on to the caller.
template <class Call>
void DescribeEvent(const TOrvEventData& record, Call&& call, std::optional<std::uint32_t> level = std::nullopt)
{
    struct Walk {
        Call& call;
        std::exception_ptr thrown;

        static void Take(OrvWord context, std::int32_t index, const OrvWChar* label, const OrvWChar* value,
                         std::uint32_t priority)
        {
            Walk& walk = *reinterpret_cast<Walk*>(context);
            if (walk.thrown) return;
            try {
                walk.call(EventLine{View(label), View(value), priority, index < 0});
            } catch (...) {
                walk.thrown = std::current_exception();
            }
        }
    };
    Walk walk{call, {}};
    std::uint32_t highest = level.value_or(0);
    if (!level) detail::Check(Talvec_Action_GetPriorityLevel(&highest));
    const OrvBool done =
        OrvAct_GetActionEventDescription2(&record, reinterpret_cast<OrvWord>(&walk), Walk::Take, highest);
    if (walk.thrown) std::rethrow_exception(walk.thrown);
    detail::Check(done);
}

}  // namespace orv
