#include "http/neighbours.h"

#include <algorithm>

namespace velmora::server {

void Neighbours::add(Id id, const std::string& address) {
    auto& waiting = m_addresses[address][Role::Waiting];
    m_places.emplace(id, Place{address, Role::Waiting, waiting.insert(waiting.end(), id)});
    ++m_counts[Role::Waiting];
}

void Neighbours::remove(Id id) {
    const auto place = m_places.find(id);
    const auto address = m_addresses.find(place->second.address);
    address->second[place->second.role].erase(place->second.at);
    --m_counts[place->second.role];
    m_places.erase(place);
    if (std::ranges::all_of(address->second, [](const auto& role) { return role.second.empty(); })) {
        m_addresses.erase(address);
    }
}

void Neighbours::setRole(Id id, Role role) {
    auto& place = m_places.at(id);
    auto& members = m_addresses.at(place.address);
    auto& there = members[role];
    there.splice(there.end(), members[place.role], place.at);
    --m_counts[place.role];
    ++m_counts[role];
    place.role = role;
}

std::size_t Neighbours::countBeside(Id id, Role role) const {
    const auto& members = m_addresses.at(m_places.at(id).address);
    const auto found = members.find(role);
    return found == members.end() ? 0 : found->second.size();
}

std::size_t Neighbours::count(Role role) const {
    const auto found = m_counts.find(role);
    return found == m_counts.end() ? 0 : found->second;
}

Neighbours::Id Neighbours::oldestBeside(Id id, Role role) const {
    return m_addresses.at(m_places.at(id).address).at(role).front();
}

std::optional<Neighbours::Id> Neighbours::firstToGo() const {
    std::optional<Id> first;
    std::size_t most = 0;
    for (const auto& [address, members] : m_addresses) {
        std::size_t idle = 0;
        std::optional<Id> oldest;
        for (const auto role : {Role::Leaving, Role::Waiting}) {
            const auto found = members.find(role);
            if (found != members.end() && !found->second.empty()) {
                idle += found->second.size();
                oldest = oldest ? oldest : found->second.front();
            }
        }
        if (idle > most) {
            most = idle;
            first = oldest;
        }
    }
    return first;
}

} // namespace velmora::server
