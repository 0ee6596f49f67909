#include "common/forms/ForeignControl.h"

namespace krv::forms {

ForeignControl::ForeignControl(Form& form, std::string name, std::string progId, Control* container)
    : Control(form, ControlKind::ForeignControl, std::move(name), container, NoIndex),
      ProgId(std::move(progId)) {}

void ForeignControl::SetObject(ports::UserInput /*input*/,
                               std::shared_ptr<ports::ForeignObject> object) {
    m_object = std::move(object);
}

void ForeignControl::DescribeKind(std::string& text) const {
    text += ProgId + (m_object ? " filled" : " empty");
}

}  // namespace krv::forms
