// The buttons: command button, check box and option button.
#pragma once

#include <string>

#include "common/forms/CaptionedControl.h"
#include "common/forms/Event.h"

namespace krv::forms {

// A push button; with a picture instead of a caption it is a PictureButton.
class CommandButton final : public CaptionedControl {
 public:
    CommandButton(Form& form, std::string name, Control* container = nullptr);
    CommandButton(Form& form, std::string name, Control* container, std::string picture);
    // The name of the picture to draw; empty for a caption button.
    const std::string Picture;
    // Enter presses the default button, Escape the cancel button.
    bool IsDefault = false;
    bool IsCancel = false;
    EventHandler OnClick;

    bool UserClicks(ports::UserInput input);

 private:
    void DescribeKind(std::string& text) const override;
};

// Raises its click event whenever its value changes, by the user or from code.
class CheckBox final : public CaptionedControl {
 public:
    CheckBox(Form& form, std::string name, Control* container = nullptr);
    Property<bool> Value;
    EventHandler OnClick;

    bool UserClicks(ports::UserInput input);

 private:
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
};

// Setting one option button clears the others of its container, before its click event is raised.
// Only the one that becomes set raises a click event.
class OptionButton final : public CaptionedControl {
 public:
    OptionButton(Form& form, std::string name, Control* container = nullptr);
    Property<bool> Value;
    EventHandler OnClick;

    bool UserClicks(ports::UserInput input);

 private:
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
    void ClearOthersOfGroup();
};

}  // namespace krv::forms
