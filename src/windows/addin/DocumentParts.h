// DocumentParts: what a document keeps for the toolbar control, in a custom XML part. A part that
// can't be read stays where it is: a later version may know better.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/MemoryPropertyBag.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class DocumentParts {
 public:
    explicit DocumentParts(LateBound document) : m_document(std::move(document)) {}

    struct Kept {
        // Nothing in a document without a part that can be read.
        std::optional<MemoryPropertyBag> bag;
        // Why a part can't be read, where there is no other; empty otherwise.
        std::string damage;
    };
    // Throws the host's Error.
    [[nodiscard]] Kept Read() const;
    // Replaces the parts that can be read. Throws the host's Error.
    void Write(const std::vector<std::byte>& contents) const;

 private:
    [[nodiscard]] std::vector<LateBound> Parts() const;

    LateBound m_document;
};

}  // namespace krv::windows
