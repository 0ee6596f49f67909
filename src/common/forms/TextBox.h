// TextBox: a text that the user edits, or only reads where the box is locked.
#pragma once

#include <string>

#include "common/forms/Control.h"
#include "common/forms/Event.h"

namespace krv::forms {

class TextBox final : public Control {
 public:
    TextBox(Form& form, std::string name, Control* container = nullptr, int index = NoIndex);
    Property<std::string> Text;
    Property<bool> Locked;
    // Design-time choices: a box that only displays, without a border or over several lines.
    bool HasBorder = true;
    bool MultiLine = false;
    // The text has changed, by the user or from code.
    EventHandler OnChange;

    // The user replaces the whole text. A locked box takes none.
    bool UserTypes(ports::UserInput input, const std::string& text);

 private:
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
};

}  // namespace krv::forms
