// PropertyBag: named values that a document keeps for an object in it. Names are compared exactly.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "common/Value.h"

namespace krv {

class PropertyBag {
 public:
    virtual ~PropertyBag() = default;
    // The value under the name, or nothing. Throws Error when the bag itself can't be read.
    virtual std::optional<Value> Find(const std::string& name) = 0;
    // Replaces what was under the name. Throws Error when the bag refuses it.
    virtual void Write(const std::string& name, const Value& value) = 0;

    [[nodiscard]] Value Read(const std::string& name, const Value& defaultValue);
    // Values of other kinds are converted by the classic rules: some containers keep everything as
    // text. Each throws Error 13 for a value that can't be converted.

    // Numbers count as true unless they are 0.
    [[nodiscard]] bool ReadBoolean(const std::string& name, bool defaultValue);
    // Rounds half to even, and true is -1. Throws Error 6 for a number that is too large.
    [[nodiscard]] std::int32_t ReadLong(const std::string& name, std::int32_t defaultValue);
    // Takes texts alone: what was never a text is of no use as one.
    [[nodiscard]] std::string ReadText(const std::string& name, const std::string& defaultValue);
};

}  // namespace krv
