#include "common/forms/Controls.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "common/Numbers.h"
#include "common/forms/Form.h"

namespace krv::forms {
namespace {

void Raise(const EventHandler& handler) {
    if (handler) {
        handler();
    }
}

void AppendQuoted(std::string& text, const std::string& value) {
    text += " \"" + value + '"';
}

}  // namespace

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

TextBox::TextBox(Form& form, std::string name, Control* container, int index)
    : Control(form, ControlKind::TextBox, std::move(name), container, index),
      Text(*this, PropertyId::Text),
      Locked(*this, PropertyId::Locked, false) {}

bool TextBox::UserTypes(UserInput /*input*/, const std::string& text) {
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

CommandButton::CommandButton(Form& form, std::string name, Control* container)
    : Control(form, ControlKind::CommandButton, std::move(name), container, NoIndex),
      Caption(*this, PropertyId::Caption) {}

CommandButton::CommandButton(Form& form, std::string name, Control* container, std::string picture)
    : Control(form, ControlKind::PictureButton, std::move(name), container, NoIndex),
      Caption(*this, PropertyId::Caption),
      Picture(std::move(picture)) {}

bool CommandButton::UserClicks(UserInput /*input*/) {
    if (!TakesUserInput()) {
        return false;
    }
    Raise(OnClick);
    return true;
}

void CommandButton::DescribeKind(std::string& text) const {
    if (Picture.empty()) {
        AppendQuoted(text, Caption);
    } else {
        text += " picture=" + Picture;
    }
}

CheckBox::CheckBox(Form& form, std::string name, Control* container)
    : Control(form, ControlKind::CheckBox, std::move(name), container, NoIndex),
      Caption(*this, PropertyId::Caption),
      Value(*this, PropertyId::Value, false) {}

bool CheckBox::UserClicks(UserInput /*input*/) {
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
    AppendQuoted(text, Caption);
    text += Value ? " checked" : " unchecked";
}

OptionButton::OptionButton(Form& form, std::string name, Control* container)
    : Control(form, ControlKind::OptionButton, std::move(name), container, NoIndex),
      Caption(*this, PropertyId::Caption),
      Value(*this, PropertyId::Value, false) {}

bool OptionButton::UserClicks(UserInput /*input*/) {
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
    AppendQuoted(text, Caption);
    text += Value ? " set" : " clear";
}

ComboBox::ComboBox(Form& form, std::string name, Control* container)
    : Control(form, ControlKind::ComboBox, std::move(name), container, NoIndex),
      Items(*this, PropertyId::Items),
      ListIndex(*this, PropertyId::ListIndex, -1) {}

std::string ComboBox::Text() const {
    const int index = ListIndex;
    return index < 0 ? std::string() : Items.Get()[static_cast<std::size_t>(index)];
}

bool ComboBox::UserSelects(UserInput /*input*/, int index) {
    if (!TakesUserInput()) {
        return false;
    }
    ListIndex = index;
    return true;
}

void ComboBox::CheckNumber(PropertyId property, double value) const {
    if (property == PropertyId::ListIndex &&
        (value < -1 || value >= static_cast<double>(Items.Get().size()))) {
        throw Error(ErrorNumber::InvalidPropertyValue);
    }
}

void ComboBox::RaiseEvents(PropertyId property) {
    if (property == PropertyId::ListIndex) {
        Raise(OnClick);
    }
}

void ComboBox::DescribeKind(std::string& text) const {
    AppendQuoted(text, Text());
}

ProgressBar::ProgressBar(Form& form, std::string name, Control* container, int index)
    : Control(form, ControlKind::ProgressBar, std::move(name), container, index),
      Min(*this, PropertyId::Min, 0.0F),
      Max(*this, PropertyId::Max, 100.0F),
      Value(*this, PropertyId::Value, 0.0F) {}

void ProgressBar::CheckNumber(PropertyId property, double value) const {
    bool accepted = true;
    if (property == PropertyId::Min) {
        accepted = value < static_cast<double>(Max);
    } else if (property == PropertyId::Max) {
        accepted = value > static_cast<double>(Min);
    } else if (property == PropertyId::Value) {
        accepted = value >= static_cast<double>(Min) && value <= static_cast<double>(Max);
    }
    if (!accepted) {
        throw Error(ErrorNumber::InvalidPropertyValue);
    }
}

void ProgressBar::RaiseEvents(PropertyId property) {
    if (property == PropertyId::Min || property == PropertyId::Max) {
        Value = std::clamp(Value.Get(), Min.Get(), Max.Get());
    }
}

void ProgressBar::DescribeKind(std::string& text) const {
    text += ' ' + NumberToText(static_cast<double>(Min)) + ".." +
            NumberToText(static_cast<double>(Max)) + '=' + NumberToText(static_cast<double>(Value));
}

Timer::Timer(Form& form, std::string name)
    : Control(form, ControlKind::Timer, std::move(name), nullptr, NoIndex) {}

void Timer::SetInterval(int milliseconds) {
    if (milliseconds < 0) {
        throw Error(ErrorNumber::InvalidPropertyValue);
    }
    m_interval = milliseconds;
    PropertyChanged(PropertyId::Interval);
}

void Timer::SetTimerEnabled(bool enabled) {
    m_enabled = enabled;
    PropertyChanged(PropertyId::Enabled);
}

bool Timer::UserWaited(UserInput /*input*/) {
    if (!Running()) {
        return false;
    }
    Raise(OnTimer);
    return true;
}

void Timer::DescribeKind(std::string& text) const {
    text += Running() ? " every " + std::to_string(m_interval) + " ms" : std::string(" stopped");
}

CommonDialog::CommonDialog(Form& form, std::string name, desktop::FileDialogs& dialogs)
    : Control(form, ControlKind::CommonDialog, std::move(name), nullptr, NoIndex),
      m_dialogs(dialogs) {}

bool CommonDialog::ShowOpen() {
    const auto chosen = m_dialogs.ChooseFileToOpen({DialogTitle, Filter, FileName});
    if (!chosen) {
        return false;
    }
    FileName = *chosen;
    return true;
}

void CommonDialog::DescribeKind(std::string& text) const {
    AppendQuoted(text, DialogTitle);
}

}  // namespace krv::forms
