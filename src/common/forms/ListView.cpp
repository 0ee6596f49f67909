#include "common/forms/ListView.h"

#include <utility>

namespace krv::forms {

ListView::ListView(Form& form, std::string name, Control* container)
    : Control(form, ControlKind::ListView, std::move(name), container, NoIndex),
      Items(*this, PropertyId::Items) {}

void ListView::DescribeKind(std::string& text) const {
    std::string rows;
    for (const Row& row : Items.Get()) {
        rows += rows.empty() ? "" : "; ";
        for (std::size_t column = 0; column < row.size(); ++column) {
            rows += (column == 0 ? "" : ", ") + row[column];
        }
    }
    AppendQuoted(text, rows);
}

}  // namespace krv::forms
