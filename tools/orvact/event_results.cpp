#include "event_results.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "action_writer.h"
#include "console.h"
#include "csv.h"
#include "event_groups.h"
#include "event_parameters.h"
#include "report.h"
#include "text.h"

namespace {

using Json = nlohmann::ordered_json;

// For people: a line with the number, the time and the text.
class Lines final : public EventResults {
public:
    explicit Lines(std::int64_t last) : width_(std::to_string(last).size()) {}

    void Add(const StoredEvent& event, const Action& action) override
    {
        const std::string id = std::to_string(event.id);
        const std::string text = action ? ShownText(action) : Visible(event.name) + ", which cannot be restored";
        const std::string blanks(width_ - std::min(width_, id.size()), ' ');
        Print(Painted(Tone::Quiet, blanks + id + "  " + Visible(event.stored)) + "  " + text + "\n");
    }

private:
    std::size_t width_;
};

class InAForm final : public EventResults {
public:
    bool Open(const std::string& form) { return writer_.Open(form); }

    void Add(const StoredEvent& event, const Action& action) override
    {
        if (!action) {
            sound_ = false;
            Complain("unwritten", "cannot be restored", {}, "event " + std::to_string(event.id));
            return;
        }
        sound_ = writer_.Write(action, {"event", static_cast<std::size_t>(event.id), false}) && sound_;
    }
    void Finish() override { writer_.Finish(); }

private:
    ActionWriter writer_;
};

// Numbers as numbers, dates and texts as texts, null for what is empty.
Json ColumnJson(const TOrvEventData& record, const EventColumn& column)
{
    if (!IsFilled(record, column)) return nullptr;
    switch (column.sort) {
    case ColumnSort::Int32: return *record.int32Field[column.index];
    case ColumnSort::Int64: return *record.int64Field[column.index];
    case ColumnSort::Double: return *record.doubleField[column.index];
    default: return ColumnValue(record, column);
    }
}

// An array with an event a line, or only the lines for what never ends.
class AsJson final : public EventResults {
public:
    explicit AsJson(bool lines) : lines_(lines) {}

    void Add(const StoredEvent& event, const Action& action) override
    {
        Json row = {{"Id", event.id}, {"Stored", event.stored}, {"Code", event.record.code}, {"Name", event.name}};
        for (const EventColumn& column : kEventColumns) row[column.name] = ColumnJson(event.record, column);
        row["Parameters"] = ParametersJson(action);
        const std::string text = row.dump(-1, ' ', false, Json::error_handler_t::replace);
        Print(lines_ ? text + "\n" : (some_ ? ",\n" : "[\n") + text);
        some_ = true;
    }
    void Finish() override
    {
        if (!lines_) Print(some_ ? "\n]\n" : "[]\n");
    }

private:
    bool lines_;
    bool some_ = false;
};

class AsTable final : public EventResults {
public:
    AsTable() : table_(Heading()) {}

    void Add(const StoredEvent& event, const Action& action) override
    {
        std::vector<std::string> cells = {std::to_string(event.id), event.stored, std::to_string(event.record.code),
                                          event.name};
        for (const EventColumn& column : kEventColumns) {
            cells.push_back(IsFilled(event.record, column) ? ColumnValue(event.record, column) : std::string());
        }
        table_.Add(std::move(cells), action);
    }
    void Finish() override { table_.Write(); }

private:
    static std::vector<std::string> Heading()
    {
        std::vector<std::string> names = {"Id", "Stored", "Code", "Name"};
        for (const EventColumn& column : kEventColumns) names.emplace_back(column.name);
        return names;
    }

    CsvTable table_;
};

class Total final : public EventResults {
public:
    void Add(const StoredEvent&, const Action&) override { ++count_; }
    bool Count(EventStore& store, const EventFilter& filter, bool& found) override
    {
        store.Count(filter, EventGrouping::One, [&](const std::string&, std::uint64_t count) { count_ += count; });
        found = count_ > 0;
        return true;
    }
    void Finish() override { Print(std::to_string(count_) + "\n"); }

private:
    std::uint64_t count_ = 0;
};

class Groups final : public EventResults {
public:
    explicit Groups(const EventsListOptions& options) : groups_(options.groupBy), options_(options) {}

    void Add(const StoredEvent& event, const Action& action) override { groups_.Add(event, action); }
    bool Count(EventStore& store, const EventFilter& filter, bool& found) override
    {
        const bool counted = groups_.Count(store, filter);
        found = !groups_.empty();
        return counted;
    }
    void Finish() override
    {
        groups_.Print(options_.json ? GroupsForm::Json : options_.csv ? GroupsForm::Csv : GroupsForm::Table);
    }

private:
    EventGroups groups_;
    const EventsListOptions& options_;
};

}  // namespace

bool EventResults::Count(EventStore&, const EventFilter&, bool&)
{
    return false;
}

std::unique_ptr<EventResults> ResultsFor(const EventsListOptions& options, std::int64_t last, bool endless)
{
    if (!options.groupBy.empty()) return std::make_unique<Groups>(options);
    if (options.count) return std::make_unique<Total>();
    if (options.json) return std::make_unique<AsJson>(endless);
    if (options.csv) return std::make_unique<AsTable>();
    if (options.to.empty()) return std::make_unique<Lines>(last);
    if (endless && IsCsv(options.to)) {
        Complain("usage", "a table is written at its end, and what is followed has none; give --json or another form");
        return nullptr;
    }
    auto form = std::make_unique<InAForm>();
    if (!form->Open(options.to)) return nullptr;
    return form;
}
