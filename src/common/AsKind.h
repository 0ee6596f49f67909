// AsKind: an object as the kind that it is asked to be, e.g. a host application as Excel.
#pragma once

#include <memory>

#include "common/Error.h"

namespace krv {

// Throws Error 13 for an object of another kind, and for none.
template <class Kind, class Object>
std::shared_ptr<Kind> AsKind(const std::shared_ptr<Object>& object) {
    if (auto found = std::dynamic_pointer_cast<Kind>(object)) {
        return found;
    }
    throw Error(ErrorNumber::TypeMismatch);
}

}  // namespace krv
