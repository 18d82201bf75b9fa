/** SQLite connections and statements that close themselves and throw SqliteError on failure. */
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

namespace television {

/** A failure of the database; the text and the code are SQLite's. */
class SqliteError : public std::runtime_error {
  public:
    SqliteError(int code, const std::string& text) : std::runtime_error(text), mCode(code) {}
    int code() const { return mCode; }

  private:
    int mCode;
};

struct SqliteCloser {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using SqliteDatabase = std::unique_ptr<sqlite3, SqliteCloser>;

/** Runs SQL whose rows, if any, are not wanted. */
void execute(sqlite3* database, const char* sql);

/**
 * A prepared statement. All parameters are bound, then either step() is called until it returns
 * false, or run() once. After run() the parameters can be bound anew. One thread at a time.
 */
class SqliteStatement {
  public:
    SqliteStatement(sqlite3* database, const char* sql);
    ~SqliteStatement() { sqlite3_finalize(mStatement); }
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;

    /** Binds integers to the parameters from the first on. */
    template <typename... T>
    SqliteStatement& bind(T... values) {
        int index = 0;
        (bindInteger(++index, static_cast<int64_t>(values)), ...);
        return *this;
    }
    /** Binds bytes, which must live until the statement has run, to the parameter `index`, from 1.
     */
    SqliteStatement& bindBytes(int index, const void* data, size_t size);

    /** Goes to the next row; returns false when there is none. */
    bool step();
    /** Runs a statement that gives no rows, and makes it ready for the next bindings. */
    void run();

    // The columns of the row count from 0.

    int64_t integer(int column) { return sqlite3_column_int64(mStatement, column); }
    /** The bytes of a column when there are exactly `size`, else null; valid until the next step.
     */
    const void* bytes(int column, size_t size);
    /** All bytes of a column. */
    std::string text(int column);

  private:
    void bindInteger(int index, int64_t value);
    void check(int result);

    sqlite3* mDatabase;
    sqlite3_stmt* mStatement = nullptr;
};

}  // namespace television
