// The handles of SQLite, which close themselves; its faults are a DatabaseError.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class Statement {
public:
    Statement(sqlite3* database, const std::string& sql);

    // Texts and bytes are borrowed until the statement is reset or given others.
    void Bind(int parameter, std::int64_t number);
    void Bind(int parameter, double number);
    void Bind(int parameter, std::string_view text);
    void Bind(int parameter, std::u16string_view text);
    void BindCopy(int parameter, std::string_view text);
    void BindBytes(int parameter, std::string_view bytes);
    void BindNull(int parameter);

    bool Step();  // true while there is a row
    void Reset();

    bool IsNull(int column) const { return sqlite3_column_type(get(), column) == SQLITE_NULL; }
    std::int64_t Integer(int column) const { return sqlite3_column_int64(get(), column); }
    double Real(int column) const { return sqlite3_column_double(get(), column); }
    std::string Text(int column) const;
    std::u16string Wide(int column) const;
    std::string Bytes(int column) const;

private:
    sqlite3_stmt* get() const { return statement_.get(); }
    void Check(int result) const;

    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    sqlite3* database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

class Database {
public:
    // Opens for reading, or with `write` for writing, which makes the file if there is none.
    Database(const std::string& path, bool write);

    sqlite3* get() const { return database_.get(); }
    void Run(const char* sql);
    std::int64_t Number(const std::string& sql);  // the first value of the first row
    // How much of the file's end is not there. The engine takes a page that is there in part for whole, with zeros.
    std::int64_t MissingBytes();

private:
    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };
    std::unique_ptr<sqlite3, Close> database_;
};
