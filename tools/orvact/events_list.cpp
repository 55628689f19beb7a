// Reads event databases: lists what fits, and shows one event in full.
#include <algorithm>

#include "action_page.h"
#include "commands.h"
#include "console.h"
#include "event_database.h"
#include "event_filter.h"
#include "forms.h"
#include "patterns.h"
#include "table.h"
#include "text.h"

namespace {

class Listing {
public:
    Listing(const Form* target, std::int64_t lastId) : target_(target), width_(std::to_string(lastId).size()) {}

    // One line, or one record of the form.
    std::string Line(const StoredEvent& event, const Action& action)
    {
        if (!target_) {
            const std::string id = std::to_string(event.id);
            const std::string text = action ? Visible(Utf8FromWide(TextOf(action, false)))
                                            : Visible(event.name) + ", which cannot be restored";
            return Painted(Tone::Quiet,
                           std::string(width_ - std::min(width_, id.size()), ' ') + id + "  " + Visible(event.stored)) +
                   "  " + text + "\n";
        }
        const Encoded encoded = action ? target_->write(action) : Encoded{"", "cannot be restored"};
        if (encoded.problem.empty()) return Delimited(*target_, encoded.record);
        sound_ = false;
        PrintError("orvact: event " + std::to_string(event.id) + ": " + encoded.problem + "\n");
        return {};
    }

    bool sound() const { return sound_; }

private:
    const Form* target_;
    std::size_t width_;
    bool sound_ = true;
};

int ListRows(const EventsListOptions& options, const Form* target)
{
    std::vector<Pattern> patterns;
    RowFilter filter;
    EventDatabase database(options.database, EventDatabase::Use::Read);
    if (!options.pattern.empty() && !ReadPatterns(options.pattern, patterns)) return kUsage;
    if (!AddConditions(options, filter)) return kUsage;
    if (!patterns.empty()) AddNecessary(patterns, filter);

    Listing listing(target, database.LastId());
    std::vector<std::string> newest;  // in front, when there is a limit
    std::size_t found = 0;
    database.Select(filter, options.limit > 0, [&](const StoredEvent& event) {
        const Action action = Restored(event);
        const bool fits = patterns.empty() || (action && MatchesAny(patterns, action));
        if (!fits) return true;
        ++found;
        std::string line = listing.Line(event, action);
        options.limit > 0 ? newest.push_back(std::move(line)) : Print(line);
        return options.limit == 0 || found < options.limit;
    });
    std::for_each(newest.rbegin(), newest.rend(), [](const std::string& line) { Print(line); });
    if (!listing.sound()) return kUnreadable;
    return found > 0 ? kDone : kNoMatch;
}

void ShowColumns(const StoredEvent& event)
{
    Table table(6);
    for (const EventColumn& column : kEventColumns) {
        if (IsFilled(event.record, column)) table.Row({column.name, ColumnText(event.record, column)});
    }
    Indented("columns:", "");
    table.Write();
    Indented("image: ", std::to_string(event.record.imageSize) + " bytes");
}

void TakeDescription(OrvWord context, std::int32_t index, const OrvWChar* label, const OrvWChar* value, std::uint32_t)
{
    if (index < 0) return;
    reinterpret_cast<Table*>(context)->Row({Visible(Utf8FromWide(label)), Visible(Utf8FromWide(value))});
}

int ShowRow(const EventsShowOptions& options)
{
    EventDatabase database(options.database, EventDatabase::Use::Read);
    RowFilter filter;
    filter.Add("Id = ?", {options.id});
    bool found = false;
    bool restored = false;
    database.Select(filter, false, [&](const StoredEvent& event) {
        constexpr std::uint32_t kEveryPriority = 0xFFFFFFFF;
        found = true;
        const Action action = Restored(event);
        restored = static_cast<bool>(action);
        if (action) {
            PrintAction(action, "event " + std::to_string(event.id));
        } else {
            PrintError("orvact: event " + std::to_string(event.id) + " cannot be restored\n");
        }
        Table description(6);
        OrvAct_GetActionEventDescription2(&event.record, reinterpret_cast<OrvWord>(&description), TakeDescription,
                                          kEveryPriority);
        Indented("described:", "");
        description.Write();
        ShowColumns(event);
        Indented("stored: ", Visible(event.stored));
        return false;
    });
    if (!found) {
        PrintError("orvact: " + options.database + ": no event " + std::to_string(options.id) + "; the last one is " +
                   std::to_string(database.LastId()) + "\n");
        return kUsage;
    }
    return restored ? kDone : kUnreadable;
}

template <class Work>
int OverDatabase(const std::string& path, Work work)
{
    try {
        return work();
    } catch (const DatabaseError& error) {
        PrintError("orvact: " + path + ": " + error.what() + "\n");
        return kUsage;
    }
}

}  // namespace

int ListEvents(const EventsListOptions& options)
{
    bool sound = true;
    const Form* target = options.to.empty() ? nullptr : TargetForm(options.to, sound);
    if (!sound) return kUsage;
    return OverDatabase(options.database, [&] { return ListRows(options, target); });
}

int ShowEvent(const EventsShowOptions& options)
{
    return OverDatabase(options.database, [&] { return ShowRow(options); });
}
