#include "common/MemoryPropertyBag.h"

namespace krv {

std::optional<Value> MemoryPropertyBag::Find(const std::string& name) {
    for (const auto& [key, value] : m_entries) {
        if (key == name) {
            return value;
        }
    }
    return std::nullopt;
}

void MemoryPropertyBag::Write(const std::string& name, const Value& value) {
    for (auto& [key, held] : m_entries) {
        if (key == name) {
            held = value;
            return;
        }
    }
    m_entries.emplace_back(name, value);
}

}  // namespace krv
