#include "common/MemoryPropertyBag.h"

#include <utility>

namespace krv {

std::optional<Value> MemoryPropertyBag::Find(const std::string& name) {
    const auto position = m_positions.find(name);
    if (position == m_positions.end()) {
        return std::nullopt;
    }
    return m_entries[position->second].second;
}

void MemoryPropertyBag::Write(const std::string& name, const Value& value) {
    const auto [position, isNew] = m_positions.try_emplace(name, m_entries.size());
    if (isNew) {
        m_entries.emplace_back(name, value);
    } else {
        m_entries[position->second].second = value;
    }
}

void MemoryPropertyBag::SetContents(std::span<const std::byte> contents) {
    std::vector<BagEntry> entries = DecodeBag(contents);
    std::unordered_map<std::string, std::size_t> positions;
    for (const auto& [name, value] : entries) {
        positions.emplace(name, positions.size());
    }
    m_entries = std::move(entries);
    m_positions = std::move(positions);
}

}  // namespace krv
