// Control: what every control of a form has. A control belongs to a form for the form's whole life
// and is named by its name and, in a control array, its index.
#pragma once

#include <cstdint>
#include <string>

#include "common/forms/Property.h"
#include "ports/desktop/FormScreen.h"

namespace krv::forms {

// A place relative to the container, in twips (1440 to the inch).
struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const Place&, const Place&) noexcept = default;
};

// A colour number: 0x00BBGGRR, or 0x80000000 plus the number of a system colour.
using Color = std::uint32_t;
namespace SystemColor {
inline constexpr Color WindowBackground = 0x80000005u;
inline constexpr Color WindowText = 0x80000008u;
inline constexpr Color ButtonFace = 0x8000000Fu;
inline constexpr Color ButtonText = 0x80000012u;
}  // namespace SystemColor

enum class ControlKind : std::uint8_t {
    Label,
    TextBox,
    CommandButton,
    PictureButton,
    CheckBox,
    OptionButton,
    ComboBox,
    ProgressBar,
    Frame,
    Timer,
    CommonDialog,
    ForeignControl,
    ListView,
};

class Form;

class Control : public PropertyOwner {
 public:
    static constexpr int NoIndex = -1;

    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    // Takes the control out of its form, so that a form never lists a control that is gone.
    virtual ~Control();

    [[nodiscard]] ControlKind Kind() const noexcept { return m_kind; }
    [[nodiscard]] const std::string& Name() const noexcept { return m_name; }
    // NoIndex unless the control is an element of a control array.
    [[nodiscard]] int Index() const noexcept { return m_index; }
    // The frame that the control lies in; null when it lies on the form.
    [[nodiscard]] Control* Container() const noexcept { return m_container; }
    [[nodiscard]] Form& Owner() const noexcept { return m_form; }

    // True when the user can reach the control: it and everything it lies in is enabled and
    // visible.
    [[nodiscard]] bool TakesUserInput() const noexcept;

    // Gives a new control its place in its container, and its tool tip.
    void LayOut(const krv::forms::Place& place, const std::string& toolTip = {});

    void Refresh();

    // The control's state in words, as it stands in Form::StateText.
    [[nodiscard]] std::string StateText() const;

    Property<bool> Enabled;
    Property<bool> Visible;
    Property<bool> TabStop;
    Property<std::string> ToolTipText;
    Property<krv::forms::Place> Place;
    Property<Color> BackColor;
    Property<Color> ForeColor;

    void PropertyChanged(PropertyId property) override;

 protected:
    Control(Form& form, ControlKind kind, std::string name, Control* container, int index);

    // The events that the change of a property raises.
    virtual void RaiseEvents(PropertyId property);
    // What the kind adds to the state text, e.g. `"text"`.
    virtual void DescribeKind(std::string& text) const = 0;

    // Reports a change to the screen, when the form is loaded, and raises no event.
    void TellScreen(PropertyId property);
    // Adds a text in quotes, its line breaks as " | ", so that a state stays on one line.
    static void AppendQuoted(std::string& text, const std::string& value);

 private:
    Form& m_form;
    const ControlKind m_kind;
    const std::string m_name;
    Control* const m_container;
    const int m_index;
};

}  // namespace krv::forms
