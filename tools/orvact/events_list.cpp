// Reads event databases: lists what fits, and shows one event in full.
#include <algorithm>
#include <charconv>

#include "action_page.h"
#include "commands.h"
#include "console.h"
#include "event_database.h"
#include "event_filter.h"
#include "forms.h"
#include "patterns.h"
#include "progress.h"
#include "report.h"
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
            const std::string text = action ? Visible(action.TextUtf8())
                                            : Visible(event.name) + ", which cannot be restored";
            return Painted(Tone::Quiet,
                           std::string(width_ - std::min(width_, id.size()), ' ') + id + "  " + Visible(event.stored)) +
                   "  " + text + "\n";
        }
        const Encoded encoded = action ? target_->write(action) : Encoded{"", "cannot be restored"};
        if (encoded.problem.empty()) return Delimited(*target_, encoded.record);
        sound_ = false;
        Complain("unwritten", encoded.problem, {}, "event " + std::to_string(event.id));
        return {};
    }

    bool sound() const { return sound_; }

private:
    const Form* target_;
    std::size_t width_;
    bool sound_ = true;
};

// "" for all.
bool ParseLimit(const std::string& text, std::size_t& limit)
{
    limit = 0;
    if (text.empty()) return true;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), limit);
    if (error == std::errc() && end == text.data() + text.size() && limit > 0) return true;
    Complain("limit", "--limit " + Visible(text) + ": expected how many events to list, 1 or more");
    return false;
}

int ListRows(const EventsListOptions& options, const Form* target, std::size_t limit)
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
    const std::int64_t last = database.LastId();
    Progress progress(ShowsPassing() ? static_cast<std::uint64_t>(last) : 0, "event");
    database.Select(filter, limit > 0, [&](const StoredEvent& event) {
        if (ShowsPassing()) progress.Show(static_cast<std::uint64_t>(limit > 0 ? last - event.id : event.id), found);
        const Action action = Restored(event);
        const bool fits = patterns.empty() || (action && MatchesAny(patterns, action));
        if (!fits) return true;
        ++found;
        std::string line = listing.Line(event, action);
        limit > 0 ? newest.push_back(std::move(line)) : Print(line);
        return limit == 0 || found < limit;
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

void PrintDescription(const StoredEvent& event)
{
    Table table(6);
    orv::DescribeEvent(
        event.record,
        [&](const orv::EventLine& line) {
            if (!line.whole) table.Row({Visible(orv::ToUtf8(line.label)), Visible(orv::ToUtf8(line.value))});
        },
        Action::kEveryPriority);
    Indented("described:", "");
    table.Write();
}

int ShowRow(const EventsShowOptions& options)
{
    EventDatabase database(options.database, EventDatabase::Use::Read);
    RowFilter filter;
    filter.Add("Id = ?", {options.id});
    bool found = false;
    bool restored = false;
    database.Select(filter, false, [&](const StoredEvent& event) {
        found = true;
        const Action action = Restored(event);
        restored = static_cast<bool>(action);
        if (action) {
            PrintAction(action, "event " + std::to_string(event.id));
        } else {
            Complain("unwritten", "cannot be restored", {}, "event " + std::to_string(event.id));
        }
        PrintDescription(event);
        ShowColumns(event);
        Indented("stored: ", Visible(event.stored));
        return false;
    });
    if (!found) {
        return Complain("unknown",
                        "no event " + std::to_string(options.id) + "; the last one is " +
                            std::to_string(database.LastId()),
                        {}, options.database);
    }
    return restored ? kDone : kUnreadable;
}

template <class Work>
int OverDatabase(const std::string& path, Work work)
{
    try {
        return work();
    } catch (const DatabaseError& error) {
        return Complain("database", error.what(), {}, path);
    } catch (const orv::Error& error) {
        return Complain("database", error.what(), {}, path);
    }
}

}  // namespace

int ListEvents(const EventsListOptions& options)
{
    bool sound = true;
    std::size_t limit = 0;
    const Form* target = options.to.empty() ? nullptr : TargetForm(options.to, sound);
    if (!sound || !ParseLimit(options.limit, limit) || (target && !MayGoOut(*target))) return kUsage;
    return OverDatabase(options.database, [&] { return ListRows(options, target, limit); });
}

int ShowEvent(const EventsShowOptions& options)
{
    return OverDatabase(options.database, [&] { return ShowRow(options); });
}
