// ForeignControl: a placeholder for a control of another maker, which the screen creates by its
// ProgID and puts in place. Screens that can't show foreign controls leave it empty.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/Value.h"
#include "common/forms/Control.h"
#include "ports/desktop/ForeignObject.h"

namespace krv::forms {

class ForeignControl final : public Control {
 public:
    ForeignControl(Form& form, std::string name, std::string progId, Control* container = nullptr);

    const std::string ProgId;
    // Design-time choices: properties by name, given to the foreign control when it is created.
    std::vector<std::pair<std::string, Value>> Properties;

    // What the screen has put in place; null while the form isn't loaded.
    [[nodiscard]] const std::shared_ptr<ports::ForeignObject>& Object() const noexcept {
        return m_object;
    }

    // From the screen, before it has reported the form loaded, and with null when it takes the form
    // off.
    void SetObject(ports::UserInput input, std::shared_ptr<ports::ForeignObject> object);

 private:
    void DescribeKind(std::string& text) const override;
    std::shared_ptr<ports::ForeignObject> m_object;
};

}  // namespace krv::forms
