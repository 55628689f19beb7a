// Reads event databases: lists what fits, and shows one event in full.
#include <algorithm>
#include <charconv>

#include "action_page.h"
#include "action_writer.h"
#include "commands.h"
#include "console.h"
#include "event_database.h"
#include "event_filter.h"
#include "patterns.h"
#include "progress.h"
#include "report.h"
#include "table.h"
#include "text.h"

namespace {

// For people: a line with the number, the time and the text.
std::string Line(const StoredEvent& event, const Action& action, std::size_t width)
{
    const std::string id = std::to_string(event.id);
    const std::string text = action ? ShownText(action) : Visible(event.name) + ", which cannot be restored";
    const std::string before = std::string(width - std::min(width, id.size()), ' ') + id + "  " + Visible(event.stored);
    return Painted(Tone::Quiet, before) + "  " + text + "\n";
}

// What is found, in a form or as lines.
class Listing {
public:
    Listing(ActionWriter* writer, std::int64_t lastId) : writer_(writer), width_(std::to_string(lastId).size()) {}

    void Add(const StoredEvent& event, const Action& action)
    {
        const std::string name = "event " + std::to_string(event.id);
        if (!writer_) {
            Print(Line(event, action, width_));
        } else if (!action) {
            sound_ = false;
            Complain("unwritten", "cannot be restored", {}, name);
        } else {
            sound_ = writer_->Write(action, {"event", static_cast<std::size_t>(event.id), false}) && sound_;
        }
    }

    bool sound() const { return sound_; }

private:
    ActionWriter* writer_;
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

bool Fits(const std::vector<Pattern>& patterns, const StoredEvent& event)
{
    if (patterns.empty()) return true;
    const Action action = Restored(event);
    return action && MatchesAny(patterns, action);
}

// The id of the oldest of the newest so many that fit: those in front of it are passed over.
std::int64_t FirstOfNewest(EventDatabase& database, const RowFilter& filter, const std::vector<Pattern>& patterns,
                           std::size_t limit)
{
    std::int64_t first = 0;
    std::size_t found = 0;
    database.Select(filter, true, [&](const StoredEvent& event) {
        if (!Fits(patterns, event)) return true;
        first = event.id;
        return ++found < limit;
    });
    return first;
}

int ListRows(const EventsListOptions& options, ActionWriter* writer, std::size_t limit)
{
    std::vector<Pattern> patterns;
    RowFilter filter;
    EventDatabase database(options.database, EventDatabase::Use::Read);
    if (!options.pattern.empty() && !ReadPatterns(options.pattern, patterns)) return kUsage;
    if (!AddConditions(options, filter)) return kUsage;
    if (!patterns.empty()) AddNecessary(patterns, filter);
    if (limit > 0) filter.Add("Id >= ?", {FirstOfNewest(database, filter, patterns, limit)});

    const std::int64_t last = database.LastId();
    Listing listing(writer, last);
    std::uint64_t found = 0;
    Progress progress(static_cast<std::uint64_t>(last), "event");
    database.Select(filter, false, [&](const StoredEvent& event) {
        if (ShowsPassing()) progress.Show(static_cast<std::uint64_t>(event.id), found);
        if (!Fits(patterns, event)) return true;
        ++found;
        listing.Add(event, Restored(event));
        return true;
    });
    if (writer) writer->Finish();
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
    const auto take = [&](const orv::EventLine& line) {
        if (!line.whole) table.Row({Visible(orv::ToUtf8(line.label)), Visible(orv::ToUtf8(line.value))});
    };
    try {
        orv::DescribeEvent(event.record, take, Action::kEveryPriority);
    } catch (const orv::Error&) {
        // What cannot be restored is told already.
    }
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
    std::size_t limit = 0;
    ActionWriter writer;
    if (!ParseLimit(options.limit, limit) || (!options.to.empty() && !writer.Open(options.to))) return kUsage;
    return OverDatabase(options.database,
                        [&] { return ListRows(options, options.to.empty() ? nullptr : &writer, limit); });
}

int ShowEvent(const EventsShowOptions& options)
{
    return OverDatabase(options.database, [&] { return ShowRow(options); });
}
