// ProgressBar: how far a piece of work has come. Min, Max and Value are single-precision.
//
// The bar refuses, with Error 380, a minimum that isn't below the maximum and a value outside the
// two; a value that a new range leaves outside follows the range.
#pragma once

#include <string>

#include "common/forms/Control.h"

namespace krv::forms {

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

}  // namespace krv::forms
