#include "sqlite.h"

#include <algorithm>

#include "event_store.h"

namespace {

constexpr int kPatience = 5000;  // milliseconds to wait for another program that writes

[[noreturn]] void Fail(sqlite3* database)
{
    throw DatabaseError(database ? sqlite3_errmsg(database) : "no memory");
}

}  // namespace

Statement::Statement(sqlite3* database, const std::string& sql) : database_(database)
{
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    statement_.reset(statement);
    Check(result);
}

void Statement::Check(int result) const
{
    if (result != SQLITE_OK) Fail(database_);
}

void Statement::Bind(int parameter, std::int64_t number)
{
    Check(sqlite3_bind_int64(get(), parameter, number));
}

void Statement::Bind(int parameter, double number)
{
    Check(sqlite3_bind_double(get(), parameter, number));
}

void Statement::Bind(int parameter, std::string_view text)
{
    Check(sqlite3_bind_text64(get(), parameter, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::BindCopy(int parameter, std::string_view text)
{
    Check(sqlite3_bind_text64(get(), parameter, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::Bind(int parameter, std::u16string_view text)
{
    Check(sqlite3_bind_text64(get(), parameter, reinterpret_cast<const char*>(text.data()), 2 * text.size(),
                              SQLITE_STATIC, SQLITE_UTF16));
}

void Statement::BindBytes(int parameter, std::string_view bytes)
{
    Check(sqlite3_bind_blob64(get(), parameter, bytes.data(), bytes.size(), SQLITE_STATIC));
}

void Statement::BindNull(int parameter)
{
    Check(sqlite3_bind_null(get(), parameter));
}

bool Statement::Step()
{
    const int result = sqlite3_step(get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) Fail(database_);
    return result == SQLITE_ROW;
}

void Statement::Reset()
{
    sqlite3_reset(get());
}

std::string Statement::Text(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(get(), column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(get(), column))) : std::string();
}

std::u16string Statement::Wide(int column) const
{
    const auto* text = static_cast<const char16_t*>(sqlite3_column_text16(get(), column));
    const auto units = static_cast<std::size_t>(sqlite3_column_bytes16(get(), column)) / 2;
    return text ? std::u16string(text, units) : std::u16string();
}

std::string Statement::Bytes(int column) const
{
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(get(), column));
    return bytes ? std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(get(), column))) : std::string();
}

Database::Database(const std::string& path, bool write)
{
    sqlite3* database = nullptr;
    // Whoever reads may have to roll back what a killed writer has left, so the file is opened for both; the engine
    // itself falls back to reading where the system refuses, as on media that are read-only.
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (write ? SQLITE_OPEN_CREATE : 0);
    sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);  // whose counters take a lock for each piece of memory
    const int result = sqlite3_open_v2(path.c_str(), &database, flags, nullptr);
    database_.reset(database);
    if (result != SQLITE_OK) Fail(database);
    sqlite3_busy_timeout(database, kPatience);
    if (!write) Run("pragma query_only = on");
}

void Database::Run(const char* sql)
{
    if (sqlite3_exec(get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) Fail(get());
}

std::int64_t Database::Number(const std::string& sql)
{
    Statement statement(get(), sql);
    return statement.Step() ? statement.Integer(0) : 0;
}

std::int64_t Database::MissingBytes()
{
    // The size of a database with a log of its own (WAL) says nothing: its last pages may stand in the log.
    Statement mode(get(), "pragma journal_mode");
    if (mode.Step() && mode.Text(0) == "wal") return 0;
    mode.Reset();
    Run("begin");  // so that no other program stores between the two sizes
    const std::int64_t wanted = Number("select page_count * page_size from pragma_page_count, pragma_page_size");
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(get(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK) Fail(get());
    const bool isFile = file->pMethods;  // a database in memory has none
    if (isFile && file->pMethods->xFileSize(file, &size) != SQLITE_OK) Fail(get());
    Run("commit");
    return isFile ? std::max<std::int64_t>(wanted - size, 0) : 0;
}
