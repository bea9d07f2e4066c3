#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace velmora::server {

/// One prepared SQL statement. Parameters are bound in order, columns read in order. Fails with
/// std::runtime_error.
class Statement {
public:
    Statement(sqlite3* connection, const char* sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& bind(const std::string& value);
    Statement& bind(std::int64_t value);
    Statement& bind(const std::optional<std::string>& value);
    Statement& bind(std::chrono::sys_seconds value);
    Statement& bind(bool value) { return bind(static_cast<std::int64_t>(value)); }
    Statement& bind(const char* value) = delete;

    /// Moves to the next row; false when there is none.
    bool step();

    /// Runs a statement that yields no rows, and returns how many rows it changed.
    int run();

    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] bool boolean(int column) const { return integer(column) != 0; }
    [[nodiscard]] std::chrono::sys_seconds time(int column) const;

private:
    void check(int result) const;

    sqlite3* m_connection;
    sqlite3_stmt* m_statement = nullptr;
    int m_bound = 0;
};

} // namespace velmora::server
