// FakeHostKinds: tells the doubles of host applications apart.
#pragma once

#include <memory>

#include "common/Error.h"
#include "ports/office/HostKinds.h"
#include "tests/support/FakeExcelHost.h"
#include "tests/support/FakeWordHost.h"

namespace krv::testing {

// An application that is nobody's kind of host.
class ForeignHost final : public office::HostApplication {};

class FakeHostKinds final : public office::HostKinds {
 public:
    std::shared_ptr<office::ExcelHost> AsExcel(
        const std::shared_ptr<office::HostApplication>& app) override {
        return Cast<office::ExcelHost>(app);
    }
    std::shared_ptr<office::Workbook> AsWorkbook(
        const std::shared_ptr<office::HostDocument>& document) override {
        return Cast<office::Workbook>(document);
    }
    std::shared_ptr<office::WordHost> AsWord(
        const std::shared_ptr<office::HostApplication>& app) override {
        return Cast<office::WordHost>(app);
    }
    std::shared_ptr<office::WordDocument> AsWordDocument(
        const std::shared_ptr<office::HostDocument>& document) override {
        return Cast<office::WordDocument>(document);
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

}  // namespace krv::testing
