// ControlArray: controls of one kind and name, told apart by their index from 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "common/Error.h"

namespace krv::forms {

class Form;
class Control;

template <class ControlType>
class ControlArray {
 public:
    ControlArray(Form& form, const std::string& name, int count, Control* container = nullptr) {
        for (int index = 0; index < count; ++index) {
            m_elements.push_back(std::make_unique<ControlType>(form, name, container, index));
        }
    }

    // Throws Error 340 for an index without a control.
    ControlType& operator[](int index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= m_elements.size()) {
            throw Error(ErrorNumber::NoSuchControlElement,
                        "Control array element '" + std::to_string(index) + "' doesn't exist");
        }
        return *m_elements[static_cast<std::size_t>(index)];
    }

 private:
    std::vector<std::unique_ptr<ControlType>> m_elements;
};

}  // namespace krv::forms
