// Tells what kind of host an object is, by asking the object for that kind's own interface.
#pragma once

#include <memory>

#include "ports/office/ExcelHost.h"
#include "ports/office/WordHost.h"

namespace krv::ports {

class HostKinds {
 public:
    virtual ~HostKinds() = default;
    // Each throws Error 13 for an object of another kind; the object isn't null.
    virtual std::shared_ptr<ExcelHost> AsExcel(const std::shared_ptr<HostApplication>& app) = 0;
    virtual std::shared_ptr<Workbook> AsWorkbook(const std::shared_ptr<HostDocument>& document) = 0;
    virtual std::shared_ptr<WordHost> AsWord(const std::shared_ptr<HostApplication>& app) = 0;
    virtual std::shared_ptr<WordDocument> AsWordDocument(
        const std::shared_ptr<HostDocument>& document) = 0;
};

}  // namespace krv::ports
