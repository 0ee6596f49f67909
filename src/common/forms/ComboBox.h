// ComboBox: a drop-down list, from which the user selects one item.
#pragma once

#include <string>
#include <vector>

#include "common/forms/Control.h"
#include "common/forms/Event.h"

namespace krv::forms {

class ComboBox final : public Control {
 public:
    ComboBox(Form& form, std::string name, Control* container = nullptr);
    // New items that leave the selected index without an item end the selection, without an event.
    Property<std::vector<std::string>> Items;
    // -1 when nothing is selected. Writing an index without an item throws Error 380.
    Property<int> ListIndex;
    // The index has changed, by the user or from code.
    EventHandler OnClick;

    // The text of the selected item, empty without one.
    [[nodiscard]] std::string Text() const;

    // An index without an item is not taken.
    bool UserSelects(ports::UserInput input, int index);

    void CheckNumber(PropertyId property, double value) const override;
    void PropertyChanged(PropertyId property) override;

 private:
    [[nodiscard]] bool HasItem(int index) const;
    void RaiseEvents(PropertyId property) override;
    void DescribeKind(std::string& text) const override;
};

}  // namespace krv::forms
