// Label: a line of text. Frame: a titled box that other controls lie in, and the group of its
// option buttons.
#pragma once

#include <string>

#include "common/forms/CaptionedControl.h"

namespace krv::forms {

class Label final : public CaptionedControl {
 public:
    Label(Form& form, std::string name, Control* container = nullptr, int index = NoIndex);
};

class Frame final : public CaptionedControl {
 public:
    Frame(Form& form, std::string name);
};

}  // namespace krv::forms
