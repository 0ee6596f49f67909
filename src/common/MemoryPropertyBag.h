// MemoryPropertyBag: a property bag in memory, apart from any document. It keeps its entries in the
// order in which they were first written.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/BagContents.h"
#include "common/PropertyBag.h"

namespace krv {

class MemoryPropertyBag final : public PropertyBag {
 public:
    std::optional<Value> Find(const std::string& name) override;
    void Write(const std::string& name, const Value& value) override;

    [[nodiscard]] const std::vector<BagEntry>& Entries() const noexcept { return m_entries; }

    // All entries as bytes. Throws Error 380 when they exceed the limits of the encoding.
    [[nodiscard]] std::vector<std::byte> Contents() const { return EncodeBag(m_entries); }
    // Replaces all entries. Throws Error 321, and leaves the bag as it was, for anything that
    // Contents didn't give.
    void SetContents(std::span<const std::byte> contents);

 private:
    std::vector<BagEntry> m_entries;
    // By name: documents from anywhere may have very many entries.
    std::unordered_map<std::string, std::size_t> m_positions;
};

}  // namespace krv
