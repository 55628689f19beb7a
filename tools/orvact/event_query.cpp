#include "event_query.h"

#include <charconv>

#include "console.h"
#include "event_filter.h"
#include "report.h"
#include "text.h"

namespace {

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

}  // namespace

EventQuery::EventQuery(const EventsListOptions& options)
{
    std::vector<Pattern> patterns;
    if (!ParseLimit(options.limit, limit_)) return;
    if (!options.pattern.empty() && !ReadPatterns(options.pattern, patterns)) return;
    if (!AddConditions(options, filter_)) return;
    if (!patterns.empty()) AddNecessary(patterns, filter_);
    rules_ = RulesOf(patterns);
    sound_ = true;
}

// The id of the oldest of the newest so many that fit: those in front of it are passed over.
std::int64_t EventQuery::FirstOfNewest(EventDatabase& database) const
{
    std::int64_t first = 0;
    std::size_t found = 0;
    database.Select(filter_, true, [&](const StoredEvent& event) {
        if (rules_.Size() > 0 && !Fits(Restored(event))) return true;
        first = event.id;
        return ++found < limit_;
    });
    return first;
}

std::int64_t EventQuery::Run(EventDatabase& database, const Take& take)
{
    Progress progress(static_cast<std::uint64_t>(database.LastId()), "event");
    return Walk(database, limit_ > 0 ? FirstOfNewest(database) - 1 : 0, take, &progress);
}

std::int64_t EventQuery::RunAfter(EventDatabase& database, std::int64_t after, const Take& take)
{
    return Walk(database, after, take, nullptr);
}

std::int64_t EventQuery::Walk(EventDatabase& database, std::int64_t after, const Take& take, Progress* progress)
{
    const std::int64_t last = database.LastId();
    std::uint64_t found = 0;
    RowFilter filter = filter_;
    filter.Add("Id > ? and Id <= ?", {after, last});
    database.Select(filter, false, [&](const StoredEvent& event) {
        if (progress && ShowsPassing()) progress->Show(static_cast<std::uint64_t>(event.id), found);
        const Action action = Restored(event);
        if (!Fits(action)) return true;
        ++found;
        take(event, action);
        return true;
    });
    return last;
}

int OverDatabase(const std::string& path, const std::function<int()>& work)
{
    try {
        return work();
    } catch (const DatabaseError& error) {
        return Complain("database", error.what(), {}, path);
    } catch (const orv::Error& error) {
        return Complain("database", error.what(), {}, path);
    }
}
