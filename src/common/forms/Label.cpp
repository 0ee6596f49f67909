#include "common/forms/Label.h"

#include <utility>

namespace krv::forms {

Label::Label(Form& form, std::string name, Control* container, int index)
    : CaptionedControl(form, ControlKind::Label, std::move(name), container, index) {}

Frame::Frame(Form& form, std::string name)
    : CaptionedControl(form, ControlKind::Frame, std::move(name), nullptr, NoIndex) {}

}  // namespace krv::forms
