#include "accounts/statement.h"

#include <sqlite3.h>

#include <stdexcept>

namespace velmora::server {

Statement::Statement(sqlite3* connection, const char* sql)
    : m_connection(connection) {
    check(sqlite3_prepare_v2(connection, sql, -1, &m_statement, nullptr));
}

Statement::~Statement() {
    sqlite3_finalize(m_statement);
}

Statement& Statement::bind(const std::string& value) {
    check(sqlite3_bind_text(m_statement, ++m_bound, value.data(), static_cast<int>(value.size()),
                            SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::bind(std::int64_t value) {
    check(sqlite3_bind_int64(m_statement, ++m_bound, value));
    return *this;
}

Statement& Statement::bind(const std::optional<std::string>& value) {
    if (value) {
        return bind(*value);
    }
    check(sqlite3_bind_null(m_statement, ++m_bound));
    return *this;
}

Statement& Statement::bind(std::chrono::sys_seconds value) {
    return bind(static_cast<std::int64_t>(value.time_since_epoch().count()));
}

bool Statement::step() {
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW) {
        return true;
    }
    if (result != SQLITE_DONE) {
        check(result);
    }
    return false;
}

int Statement::run() {
    step();
    return sqlite3_changes(m_connection);
}

bool Statement::isNull(int column) const {
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

std::string Statement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
    return bytes ? std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column)))
                 : std::string();
}

std::int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(m_statement, column);
}

std::chrono::sys_seconds Statement::time(int column) const {
    return std::chrono::sys_seconds(std::chrono::seconds(integer(column)));
}

void Statement::check(int result) const {
    if (result != SQLITE_OK) {
        throw std::runtime_error(std::string("database: ") + sqlite3_errmsg(m_connection));
    }
}

} // namespace velmora::server
