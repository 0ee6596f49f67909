// MemoryPropertyBag: a property bag that belongs to nobody's document. It keeps its entries in the
// order in which they were first written.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "common/PropertyBag.h"

namespace krv {

class MemoryPropertyBag final : public PropertyBag {
 public:
    std::optional<Value> Find(const std::string& name) override;
    void Write(const std::string& name, const Value& value) override;

    using Entry = std::pair<std::string, Value>;
    [[nodiscard]] const std::vector<Entry>& Entries() const noexcept { return m_entries; }

 private:
    std::vector<Entry> m_entries;
};

}  // namespace krv
