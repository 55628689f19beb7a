#include "postgres.h"

#include <poll.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>

namespace Postgres {

namespace {

// The client library's messages have line breaks in them.
std::string OneLine(std::string_view message)
{
    std::string line;
    for (const char unit : message) {
        if (unit == '\r' || unit == '\t') continue;
        line += unit == '\n' ? ' ' : unit;
    }
    while (line.ends_with(' ')) line.pop_back();
    return line;
}

struct AsText {
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(double number) const
    {
        char digits[32];
        return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
    }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const std::u16string& text) const { return orv::ToUtf8(text); }
    std::string operator()(orv::TimePoint time) const { return StoredTime(time.time_since_epoch().count()); }
};

std::uint64_t BigEndian(std::string_view bytes)
{
    std::uint64_t number = 0;
    for (const char byte : bytes) number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

}  // namespace

std::uint64_t Result::changed() const
{
    const std::string_view text = PQcmdTuples(get());
    std::uint64_t count = 0;
    std::from_chars(text.data(), text.data() + text.size(), count);
    return count;
}

std::string_view Result::Bytes(int row, int column) const
{
    return {PQgetvalue(get(), row, column), static_cast<std::size_t>(PQgetlength(get(), row, column))};
}

std::int64_t Result::Integer(int row, int column) const
{
    const std::string_view bytes = Bytes(row, column);
    const std::uint64_t number = BigEndian(bytes);
    if (bytes.size() == 4) return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
    return static_cast<std::int64_t>(number);
}

double Result::Real(int row, int column) const
{
    return std::bit_cast<double>(BigEndian(Bytes(row, column)));
}

Connection::Connection(const std::string& home)
{
    char* problem = nullptr;
    PQconninfoOption* options = PQconninfoParse(home.c_str(), &problem);
    // The client library's message about a broken connection string shows parts of it.
    if (problem) PQfreemem(problem);
    if (!options) throw DatabaseError("this is no connection string; give postgresql://USER@HOST/DATABASE");
    PQconninfoFree(options);
    const char* const names[] = {"dbname", "client_encoding", "fallback_application_name", nullptr};
    const char* const values[] = {home.c_str(), "UTF8", "orvact", nullptr};
    connection_.reset(PQconnectdbParams(names, values, 1));
    if (!connection_) throw std::bad_alloc();
    PQsetNoticeProcessor(
        connection_.get(), [](void*, const char*) {}, nullptr);
    if (PQstatus(connection_.get()) != CONNECTION_OK) throw ConnectionLost(OneLine(PQerrorMessage(connection_.get())));
}

void Connection::Fail(const PGresult* result)
{
    if (PQstatus(connection_.get()) == CONNECTION_BAD) throw ConnectionLost(OneLine(PQerrorMessage(connection_.get())));
    const char* state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    const char* primary = PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
    const std::string message = OneLine(primary ? primary : PQerrorMessage(connection_.get()));
    // An administrator ends the session, or the server goes down, starts or recovers.
    if (state && std::string_view(state).starts_with("57P")) throw ConnectionLost(message);
    throw DatabaseError(message);
}

Result Connection::Checked(PGresult* given)
{
    Result result(given);
    const ExecStatusType status = PQresultStatus(given);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK && status != PGRES_COPY_IN) Fail(given);
    return result;
}

Result Connection::Run(const std::string& sql, const std::vector<EventValue>& values)
{
    std::vector<std::string> texts;
    for (const EventValue& value : values) texts.push_back(std::visit(AsText(), value));
    std::vector<const char*> pointers;
    for (const std::string& text : texts) pointers.push_back(text.c_str());
    return Checked(PQexecParams(connection_.get(), sql.c_str(), static_cast<int>(pointers.size()), nullptr,
                                pointers.data(), nullptr, nullptr, 1));
}

void Connection::Script(const std::string& sql)
{
    Checked(PQexec(connection_.get(), sql.c_str()));
}

std::int64_t Connection::Number(const std::string& sql, const std::vector<EventValue>& values)
{
    const Result result = Run(sql, values);
    return result.rows() > 0 && !result.IsNull(0, 0) ? result.Integer(0, 0) : 0;
}

std::string Connection::Text(const std::string& sql)
{
    const Result result = Run(sql);
    return result.rows() > 0 ? std::string(result.Bytes(0, 0)) : std::string();
}

void Connection::BeginCopy(const std::string& sql)
{
    const Result result = Checked(PQexec(connection_.get(), sql.c_str()));
    if (PQresultStatus(result.get()) != PGRES_COPY_IN) throw DatabaseError("the server takes no copy");
}

void Connection::PutCopy(std::string_view data)
{
    if (PQputCopyData(connection_.get(), data.data(), static_cast<int>(data.size())) != 1) Fail(nullptr);
}

void Connection::EndCopy()
{
    if (PQputCopyEnd(connection_.get(), nullptr) != 1) Fail(nullptr);
    const Result result = Checked(PQgetResult(connection_.get()));
    // Behind the result of a copy stands the end of the command.
    for (PGresult* rest = nullptr; (rest = PQgetResult(connection_.get())) != nullptr;) PQclear(rest);
    (void)result;
}

void Connection::WaitForNotice(std::chrono::milliseconds atMost)
{
    pollfd waited{PQsocket(connection_.get()), POLLIN, 0};
    poll(&waited, 1, static_cast<int>(atMost.count()));
    if (!PQconsumeInput(connection_.get())) Fail(nullptr);
    while (PGnotify* notice = PQnotifies(connection_.get())) PQfreemem(notice);
}

}  // namespace Postgres
