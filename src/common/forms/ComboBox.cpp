#include "common/forms/ComboBox.h"

#include <utility>

#include "common/Error.h"
#include "common/forms/Form.h"

namespace krv::forms {

ComboBox::ComboBox(Form& form, std::string name, Control* container)
    : Control(form, ControlKind::ComboBox, std::move(name), container, NoIndex),
      Items(*this, PropertyId::Items),
      ListIndex(*this, PropertyId::ListIndex, -1) {}

std::string ComboBox::Text() const {
    const int index = ListIndex;
    return index < 0 ? std::string() : Items.Get()[static_cast<std::size_t>(index)];
}

bool ComboBox::UserSelects(ports::UserInput /*input*/, int index) {
    if (!TakesUserInput() || !HasItem(index)) {
        return false;
    }
    ListIndex = index;
    return true;
}

void ComboBox::CheckNumber(PropertyId property, double value) const {
    if (property == PropertyId::ListIndex && value != -1 && !HasItem(static_cast<int>(value))) {
        throw Error(ErrorNumber::InvalidPropertyValue);
    }
}

void ComboBox::PropertyChanged(PropertyId property) {
    const bool selectionLost =
        property == PropertyId::Items && ListIndex >= 0 && !HasItem(ListIndex);
    if (selectionLost) {
        ListIndex.Preset(-1);
    }
    Control::PropertyChanged(property);
    if (selectionLost) {
        TellScreen(PropertyId::ListIndex);
    }
}

bool ComboBox::HasItem(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < Items.Get().size();
}

void ComboBox::RaiseEvents(PropertyId property) {
    if (property == PropertyId::ListIndex) {
        Raise(OnClick);
    }
}

void ComboBox::DescribeKind(std::string& text) const {
    AppendQuoted(text, Text());
}

}  // namespace krv::forms
