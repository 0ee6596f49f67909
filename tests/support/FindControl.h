// FindControl: a form's control by its name and, in a control array, its index; null when the form
// has none.
#pragma once

#include <string>

#include "common/forms/Form.h"

namespace krv::tests {

inline forms::Control* FindControl(const forms::Form& form, const std::string& name,
                                   int index = forms::Control::NoIndex) {
    for (forms::Control* control : form.Controls()) {
        if (control->Name() == name && control->Index() == index) {
            return control;
        }
    }
    return nullptr;
}

}  // namespace krv::tests
