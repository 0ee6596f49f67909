// ListView: rows of texts under column headings, which the user reads and moves through.
#pragma once

#include <string>
#include <vector>

#include "common/forms/Control.h"

namespace krv::forms {

struct ListColumn {
    std::string heading;
    // Twips.
    int width = 0;
    friend bool operator==(const ListColumn&, const ListColumn&) = default;
};

class ListView final : public Control {
 public:
    // A text for each column; missing ones are empty.
    using Row = std::vector<std::string>;

    ListView(Form& form, std::string name, Control* container = nullptr);
    // A design-time choice.
    std::vector<ListColumn> Columns;
    Property<std::vector<Row>> Items;

 private:
    void DescribeKind(std::string& text) const override;
};

}  // namespace krv::forms
