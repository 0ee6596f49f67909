// StateList: captured states of instruments under names, as a document keeps them.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "common/PropertyBag.h"
#include "common/Value.h"

namespace krv::suite {

struct NamedState {
    std::string name;
    // Local time.
    DateValue captured;
    // Of the instrument that the state was taken from.
    std::string model;
    std::string version;
    // Opaque.
    Value snapshot;
};

// Every operation that throws leaves the list as it was. Indexes count from 0; one that is too
// large is Error 9.
class StateList {
 public:
    static constexpr std::size_t MaxStates = 1000;
    static constexpr std::size_t MaxNameLength = 64;

    // In the order in which they were captured.
    [[nodiscard]] const std::vector<NamedState>& States() const noexcept { return m_states; }
    [[nodiscard]] const NamedState& At(std::size_t index) const;
    // "State 1" or the first after it that isn't taken.
    [[nodiscard]] std::string FreeName() const;

    // The name that a list without the other states would take: without blanks at its ends. Throws
    // Error 380 for one that is empty, too long or holds control characters, and Error 457 for one
    // that another state has, whatever its case.
    [[nodiscard]] std::string ValidName(const std::string& name) const;

    // Throws what ValidName throws, and Error 7 or 380 when a bag could not keep them all.
    void Add(NamedState state);
    void Rename(std::size_t index, const std::string& name);
    void Delete(std::size_t index);

    void Write(PropertyBag& bag) const;
    // The bag may come from anywhere. Throws Error 321 or 380 for what Write doesn't write.
    void Read(PropertyBag& bag);

 private:
    std::vector<NamedState> m_states;
};

}  // namespace krv::suite
