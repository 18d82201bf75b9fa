#include "television/base/sqlite.h"

namespace television {

void execute(sqlite3* database, const char* sql) {
    const int result = sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) throw SqliteError(result, sqlite3_errmsg(database));
}

SqliteStatement::SqliteStatement(sqlite3* database, const char* sql) : mDatabase(database) {
    check(sqlite3_prepare_v2(database, sql, -1, &mStatement, nullptr));
}

void SqliteStatement::check(int result) {
    if (result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE) {
        throw SqliteError(result, sqlite3_errmsg(mDatabase));
    }
}

void SqliteStatement::bindInteger(int index, int64_t value) {
    check(sqlite3_bind_int64(mStatement, index, value));
}

SqliteStatement& SqliteStatement::bindBytes(int index, const void* data, size_t size) {
    check(sqlite3_bind_blob64(mStatement, index, data, size, SQLITE_STATIC));
    return *this;
}

bool SqliteStatement::step() {
    const int result = sqlite3_step(mStatement);
    check(result);
    return result == SQLITE_ROW;
}

void SqliteStatement::run() {
    const int result = sqlite3_step(mStatement);
    sqlite3_reset(mStatement);
    check(result);
}

std::string SqliteStatement::text(int column) {
    const void* data = sqlite3_column_blob(mStatement, column);
    const auto size = static_cast<size_t>(sqlite3_column_bytes(mStatement, column));
    return data == nullptr ? std::string() : std::string(static_cast<const char*>(data), size);
}

const void* SqliteStatement::bytes(int column, size_t size) {
    const void* data = sqlite3_column_blob(mStatement, column);
    return static_cast<size_t>(sqlite3_column_bytes(mStatement, column)) == size ? data : nullptr;
}

}  // namespace television
