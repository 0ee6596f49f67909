#include "common/forms/Label.h"

#include <utility>

namespace krv::forms {

Label::Label(Form& form, std::string name, Control* container, int index)
    : Control(form, ControlKind::Label, std::move(name), container, index),
      Caption(*this, PropertyId::Caption) {}

void Label::DescribeKind(std::string& text) const {
    AppendQuoted(text, Caption);
}

Frame::Frame(Form& form, std::string name)
    : Control(form, ControlKind::Frame, std::move(name), nullptr, NoIndex),
      Caption(*this, PropertyId::Caption) {}

void Frame::DescribeKind(std::string& text) const {
    AppendQuoted(text, Caption);
}

}  // namespace krv::forms
