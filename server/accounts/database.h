#pragma once

#include <filesystem>
#include <functional>
#include <mutex>
#include <type_traits>

struct sqlite3;

namespace velmora::server {

class Statement;

/// The server's one SQLite file, in write-ahead mode: what has been committed survives a killed process.
class Database {
public:
    /// Makes the file and its tables where they are missing, and brings older ones up to date. Fails with
    /// std::runtime_error.
    explicit Database(const std::filesystem::path& file);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Runs `work` alone, in one transaction: committed when it returns, rolled back when it throws.
    template<typename Work>
    auto transaction(Work work) {
        const std::scoped_lock lock(m_mutex);
        Transaction transaction(*this);
        if constexpr (std::is_void_v<decltype(work())>) {
            work();
            transaction.commit();
        } else {
            auto result = work();
            transaction.commit();
            return result;
        }
    }

    /// Only within a transaction.
    [[nodiscard]] Statement prepare(const char* sql);

private:
    class Transaction {
    public:
        explicit Transaction(Database& database);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void commit();

    private:
        Database& m_database;
        bool m_open = true;
    };

    void bringUpToDate();
    void execute(const char* sql);

    std::mutex m_mutex;
    sqlite3* m_connection = nullptr;
};

} // namespace velmora::server
