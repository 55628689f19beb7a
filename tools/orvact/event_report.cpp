// Writes a page about events: the frame, style and script of web/, and the events as columns of numbers beside texts.
#include <map>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "console.h"
#include "event_groups.h"
#include "event_query.h"
#include "iso_time.h"
#include "report.h"
#include "text.h"
#include "web.h"

namespace {

using Json = nlohmann::ordered_json;

// Texts that occur often, by their number.
class Pool {
public:
    std::size_t Of(const std::string& text)
    {
        const auto [found, added] = numbers_.try_emplace(text, texts_.size());
        if (added) texts_.push_back(Visible(text));
        return found->second;
    }
    Json& texts() { return texts_; }

private:
    std::map<std::string, std::size_t> numbers_;
    Json texts_ = Json::array();
};

// Numbers that grow slowly, each as the distance from the one before it.
class Steps {
public:
    void Add(std::int64_t number)
    {
        steps_.push_back(number - last_);
        last_ = number;
    }
    Json& steps() { return steps_; }

private:
    std::int64_t last_ = 0;
    Json steps_ = Json::array();
};

class Columns {
public:
    void Add(const StoredEvent& event, const Action& action)
    {
        const auto stored = DateFromIso(event.stored);
        ids_.Add(event.id);
        times_.Add(stored ? orv::ToTimePoint(*stored).time_since_epoch().count() : 0);
        const std::size_t name = names_.Of(event.name);
        // A new name: its class stands at the same number.
        if (name == classOfName_.size()) classOfName_.push_back(classes_.Of(ClassOf(event.record.code)));
        name_.push_back(name);
        user_.push_back(users_.Of(UserOf(event.record)));
        channel_.push_back(channels_.Of(ChannelOf(action)));
        texts_.push_back(action ? ShownText(action) : "");
    }

    // A document that can stand inside a page: nothing in it ends a script.
    std::string Document(const std::string& database)
    {
        const Json document = {{"database", Visible(database)},
                               {"written", StoredTime(Now())},
                               {"classes", classes_.texts()},
                               {"names", names_.texts()},
                               {"classOfName", classOfName_},
                               {"users", users_.texts()},
                               {"channels", channels_.texts()},
                               {"ids", ids_.steps()},
                               {"times", times_.steps()},
                               {"name", name_},
                               {"user", user_},
                               {"channel", channel_},
                               {"texts", texts_}};
        return Replaced(document.dump(-1, ' ', false, Json::error_handler_t::replace), "<", "\\u003c");
    }

private:
    Steps ids_, times_;
    Pool classes_, names_, users_, channels_;
    Json classOfName_ = Json::array(), name_ = Json::array(), user_ = Json::array(), channel_ = Json::array(),
         texts_ = Json::array();
};

int WriteReport(const EventsListOptions& options)
{
    const auto store = OpenEventStore(options.database, EventStore::Use::Read);
    EventQuery query(options);
    if (!query.sound()) return kUsage;
    Columns columns;
    std::size_t found = 0;
    query.Run(*store, [&](const StoredEvent& event, const Action& action) {
        ++found;
        columns.Add(event, action);
    });
    Print(Filled(Web::kReportHtml, {{"style", std::string(Web::kPageCss) + std::string(Web::kReportCss)},
                                    {"script", std::string(Web::kReportJs)},
                                    {"data", columns.Document(HomeName(options.database))}}));
    return found > 0 ? kDone : kNoMatch;
}

}  // namespace

int ReportEvents(const EventsListOptions& options)
{
    if (OutputIsTerminal()) return Complain("usage", "a page is not for a terminal; give -o FILE or a pipe");
    return OverStore(options.database, [&] { return WriteReport(options); });
}
