// The kinds of control that the dialogs use, with the events of the classic form package:
// setting a text box's text raises its change event; setting a check box, an option button or a
// combo box's index raises its click event when the value changes; a control that the user can't
// reach takes no user input. The `User...` operations are for screens alone; each returns whether
// the control took the input.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "common/forms/Control.h"
#include "ports/desktop/FileDialogs.h"

namespace krv::forms {

using EventHandler = std::function<void()>;
using desktop::UserInput;

class Label final : public Control {
 public:
    Label(Form& form, std::string name, Control* container = nullptr, int index = NoIndex);
    Property<std::string> Caption;

 private:
    void DescribeKind(std::string& text) const override;
};

class Frame final : public Control {
 public:
    Frame(Form& form, std::string name);
    Property<std::string> Caption;

 private:
    void DescribeKind(std::string& text) const override;
};

class TextBox final : public Control {
 public:
    TextBox(Form& form, std::string name, Control* container = nullptr, int index = NoIndex);
    Property<std::string> Text;
    Property<bool> Locked;
    // Design-time choices: a box that only displays, without a border or over several lines.
    bool HasBorder = true;
    bool MultiLine = false;
    EventHandler OnChange;

    // The user replaces the whole text. A locked box takes none.
    bool UserTypes(UserInput input, const std::string& text);

 private:
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
};

// A push button; with a picture instead of a caption it is a PictureButton.
class CommandButton final : public Control {
 public:
    CommandButton(Form& form, std::string name, Control* container = nullptr);
    CommandButton(Form& form, std::string name, Control* container, std::string picture);
    Property<std::string> Caption;
    // The name of the picture to draw; empty for a caption button.
    const std::string Picture;
    // Enter presses the default button, Escape the cancel button.
    bool IsDefault = false;
    bool IsCancel = false;
    EventHandler OnClick;

    bool UserClicks(UserInput input);

 private:
    void DescribeKind(std::string& text) const override;
};

class CheckBox final : public Control {
 public:
    CheckBox(Form& form, std::string name, Control* container = nullptr);
    Property<std::string> Caption;
    Property<bool> Value;
    EventHandler OnClick;

    bool UserClicks(UserInput input);

 private:
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
};

// Setting one option button clears the others of its container. Only the one that becomes set
// raises a click event.
class OptionButton final : public Control {
 public:
    OptionButton(Form& form, std::string name, Control* container = nullptr);
    Property<std::string> Caption;
    Property<bool> Value;
    EventHandler OnClick;

    bool UserClicks(UserInput input);

 private:
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
    void ClearOthersOfGroup();
};

// A drop-down list.
class ComboBox final : public Control {
 public:
    ComboBox(Form& form, std::string name, Control* container = nullptr);
    Property<std::vector<std::string>> Items;
    // -1 when nothing is selected. Writing an index without an item throws Error 380.
    Property<int> ListIndex;
    EventHandler OnClick;

    // The text of the selected item, empty without one.
    [[nodiscard]] std::string Text() const;

    bool UserSelects(UserInput input, int index);

    void CheckNumber(PropertyId property, double value) const override;

 private:
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
};

// Min, Max and Value are single-precision. The bar refuses, with Error 380, a minimum that isn't
// below the maximum and a value outside the two; a value that a new range leaves outside follows
// the range.
class ProgressBar final : public Control {
 public:
    ProgressBar(Form& form, std::string name, Control* container = nullptr, int index = NoIndex);
    Property<float> Min;
    Property<float> Max;
    Property<float> Value;

    void CheckNumber(PropertyId property, double value) const override;

 private:
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
};

// Fires again and again every Interval milliseconds while Enabled and Interval is above 0. Every
// write of either restarts the wait, also one that changes nothing.
class Timer final : public Control {
 public:
    Timer(Form& form, std::string name);

    [[nodiscard]] int Interval() const noexcept { return m_interval; }
    void SetInterval(int milliseconds);
    [[nodiscard]] bool TimerEnabled() const noexcept { return m_enabled; }
    void SetTimerEnabled(bool enabled);
    [[nodiscard]] bool Running() const noexcept { return m_enabled && m_interval > 0; }

    EventHandler OnTimer;

    // The wait is over. A stopped timer takes no notice.
    bool UserWaited(UserInput input);

 private:
    void DescribeKind(std::string& text) const override;
    int m_interval = 0;
    bool m_enabled = true;
};

// The non-visual control behind a browse button.
class CommonDialog final : public Control {
 public:
    CommonDialog(Form& form, std::string name, desktop::FileDialogs& dialogs);
    std::string DialogTitle;
    std::string Filter;
    std::string FileName;

    // Shows the open dialog; a chosen path becomes FileName. Returns false when it was cancelled.
    bool ShowOpen();

 private:
    void DescribeKind(std::string& text) const override;
    desktop::FileDialogs& m_dialogs;
};

}  // namespace krv::forms
