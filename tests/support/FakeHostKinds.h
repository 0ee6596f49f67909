// FakeHostKinds: tells the doubles of host applications apart.
#pragma once

#include <memory>

#include "common/Error.h"
#include "ports/office/HostKinds.h"
#include "tests/support/FakeExcelHost.h"
#include "tests/support/FakeWordHost.h"

namespace krv::tests {

// An application that is nobody's kind of host.
class ForeignHost final : public ports::HostApplication {};

class FakeHostKinds final : public ports::HostKinds {
 public:
    std::shared_ptr<ports::ExcelHost> AsExcel(
        const std::shared_ptr<ports::HostApplication>& app) override {
        return Cast<ports::ExcelHost>(app);
    }
    std::shared_ptr<ports::Workbook> AsWorkbook(
        const std::shared_ptr<ports::HostDocument>& document) override {
        return Cast<ports::Workbook>(document);
    }
    std::shared_ptr<ports::WordHost> AsWord(
        const std::shared_ptr<ports::HostApplication>& app) override {
        return Cast<ports::WordHost>(app);
    }
    std::shared_ptr<ports::WordDocument> AsWordDocument(
        const std::shared_ptr<ports::HostDocument>& document) override {
        return Cast<ports::WordDocument>(document);
    }

 private:
    template <class Kind, class Object>
    static std::shared_ptr<Kind> Cast(const std::shared_ptr<Object>& object) {
        if (auto found = std::dynamic_pointer_cast<Kind>(object)) {
            return found;
        }
        throw Error(ErrorNumber::TypeMismatch);
    }
};

}  // namespace krv::tests
