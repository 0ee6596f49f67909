// Label: a line of text. Frame: a titled box that other controls lie in, and the group of its
// option buttons.
#pragma once

#include <string>

#include "common/forms/Control.h"

namespace krv::forms {

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

}  // namespace krv::forms
