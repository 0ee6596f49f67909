#include "common/forms/Buttons.h"

#include <utility>

#include "common/forms/Form.h"

namespace krv::forms {

CommandButton::CommandButton(Form& form, std::string name, Control* container)
    : CaptionedControl(form, ControlKind::CommandButton, std::move(name), container, NoIndex) {}

CommandButton::CommandButton(Form& form, std::string name, Control* container, std::string picture)
    : CaptionedControl(form, ControlKind::PictureButton, std::move(name), container, NoIndex),
      Picture(std::move(picture)) {}

bool CommandButton::UserClicks(ports::UserInput /*input*/) {
    if (!TakesUserInput()) {
        return false;
    }
    Raise(OnClick);
    return true;
}

void CommandButton::DescribeKind(std::string& text) const {
    if (Picture.empty()) {
        CaptionedControl::DescribeKind(text);
    } else {
        text += "picture=" + Picture;
    }
}

CheckBox::CheckBox(Form& form, std::string name, Control* container)
    : CaptionedControl(form, ControlKind::CheckBox, std::move(name), container, NoIndex),
      Value(*this, PropertyId::Value, false) {}

bool CheckBox::UserClicks(ports::UserInput /*input*/) {
    if (!TakesUserInput()) {
        return false;
    }
    Value = !Value;
    return true;
}

void CheckBox::RaiseEvents(PropertyId property) {
    if (property == PropertyId::Value) {
        Raise(OnClick);
    }
}

void CheckBox::DescribeKind(std::string& text) const {
    CaptionedControl::DescribeKind(text);
    text += Value ? " checked" : " unchecked";
}

OptionButton::OptionButton(Form& form, std::string name, Control* container)
    : CaptionedControl(form, ControlKind::OptionButton, std::move(name), container, NoIndex),
      Value(*this, PropertyId::Value, false) {}

bool OptionButton::UserClicks(ports::UserInput /*input*/) {
    if (!TakesUserInput()) {
        return false;
    }
    Value = true;
    return true;
}

void OptionButton::RaiseEvents(PropertyId property) {
    if (property == PropertyId::Value && Value) {
        ClearOthersOfGroup();
        Raise(OnClick);
    }
}

void OptionButton::ClearOthersOfGroup() {
    for (Control* control : Owner().Controls()) {
        if (control != this && control->Kind() == ControlKind::OptionButton &&
            control->Container() == Container()) {
            static_cast<OptionButton*>(control)->Value = false;
        }
    }
}

void OptionButton::DescribeKind(std::string& text) const {
    CaptionedControl::DescribeKind(text);
    text += Value ? " set" : " clear";
}

}  // namespace krv::forms
