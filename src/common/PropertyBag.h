// PropertyBag: named values that a document keeps for an object in it. Names are compared exactly.
#pragma once

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
    // Numbers count as true unless they are 0. Throws Error 13 for a value that is neither a number
    // nor a boolean.
    [[nodiscard]] bool ReadBoolean(const std::string& name, bool defaultValue);
};

}  // namespace krv
