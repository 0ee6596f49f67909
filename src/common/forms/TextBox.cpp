#include "common/forms/TextBox.h"

#include <utility>

namespace krv::forms {

TextBox::TextBox(Form& form, std::string name, Control* container, int index)
    : Control(form, ControlKind::TextBox, std::move(name), container, index),
      Text(*this, PropertyId::Text),
      Locked(*this, PropertyId::Locked, false) {}

bool TextBox::UserTypes(ports::UserInput /*input*/, const std::string& text) {
    if (!TakesUserInput() || Locked) {
        return false;
    }
    Text = text;
    return true;
}

void TextBox::RaiseEvents(PropertyId property) {
    if (property == PropertyId::Text) {
        Raise(OnChange);
    }
}

void TextBox::DescribeKind(std::string& text) const {
    AppendQuoted(text, Text);
    if (Locked) {
        text += " locked";
    }
}

}  // namespace krv::forms
