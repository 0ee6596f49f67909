#include "common/forms/ProgressBar.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "common/Numbers.h"

namespace krv::forms {

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
    text += NumberToText(static_cast<double>(Min)) + ".." + NumberToText(static_cast<double>(Max)) +
            '=' + NumberToText(static_cast<double>(Value));
}

}  // namespace krv::forms
