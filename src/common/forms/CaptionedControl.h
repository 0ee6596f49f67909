// CaptionedControl: what labels, frames and the kinds of button have in common: a caption.
#pragma once

#include <string>
#include <utility>

#include "common/forms/Control.h"

namespace krv::forms {

class CaptionedControl : public Control {
 public:
    Property<std::string> Caption;

    // The same as Control's, with the caption.
    void LayOut(const krv::forms::Place& place, const std::string& caption = {},
                const std::string& toolTip = {}) {
        Control::LayOut(place, toolTip);
        Caption = caption;
    }

 protected:
    CaptionedControl(Form& form, ControlKind kind, std::string name, Control* container, int index)
        : Control(form, kind, std::move(name), container, index),
          Caption(*this, PropertyId::Caption) {}

    // The caption in quotes.
    void DescribeKind(std::string& text) const override { AppendQuoted(text, Caption); }
};

}  // namespace krv::forms
