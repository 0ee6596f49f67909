// BookApplication: the workbook application without its window.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "bench/book/BookRange.h"
#include "bench/book/Workbook.h"
#include "bench/shared/OfficeApplication.h"

namespace krv::bench {

class BookApplication final : public OfficeApplication {
 public:
    BookApplication();

    // Null when none is open.
    [[nodiscard]] std::shared_ptr<Workbook> ActiveBook() const {
        return std::static_pointer_cast<Workbook>(Active());
    }
    // In the active book. Throws Error 1004 when there is none or the text is no range.
    [[nodiscard]] BookRange Range(const std::string& text) const;

    [[nodiscard]] bool IsScreenUpdating() const { return m_isScreenUpdating; }
    void SetScreenUpdating(bool isUpdating);

 private:
    [[nodiscard]] DocumentPointer NewDocument(const std::string& name,
                                              OfficeDocument::Listener listener) const override {
        return std::make_shared<Workbook>(name, std::move(listener));
    }

    bool m_isScreenUpdating = true;
};

}  // namespace krv::bench
