#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>

namespace velmora::server {

/// Which connections come from where, and which of them are the first to give way.
class Neighbours {
public:
    using Id = std::uint64_t;
    /// Waiting for a request; at work; on a thread of its own; leaving.
    enum class Role { Waiting, Working, Streaming, Leaving };

    void add(Id id, const std::string& address);
    void remove(Id id);
    void setRole(Id id, Role role);

    /// How many the address of this connection has in a role.
    [[nodiscard]] std::size_t countBeside(Id id, Role role) const;
    [[nodiscard]] std::size_t count(Role role) const;

    /// The one that has been in the role for longest, at the address of this connection.
    [[nodiscard]] Id oldestBeside(Id id, Role role) const;
    /// The one to give way when there are too many in all: of the address that has most of them. One that is
    /// leaving is preferred. None if all are being worked for.
    [[nodiscard]] std::optional<Id> firstToGo() const;

private:
    /// In the order in which they came into their role.
    using Members = std::map<Role, std::list<Id>>;
    struct Place {
        std::string address;
        Role role;
        std::list<Id>::iterator at;
    };

    std::map<std::string, Members> m_addresses;
    std::unordered_map<Id, Place> m_places;
    std::map<Role, std::size_t> m_counts;
};

} // namespace velmora::server
