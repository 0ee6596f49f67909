// Objects of the office ports over automation objects of an Office application. The fronts and the
// suite's adapters receive such objects and wrap them here; AutomationPeer leads back.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>

#include <memory>

#include "ports/office/ExcelHost.h"
#include "ports/office/WordHost.h"

namespace krv::windows {

// A ports::ExcelHost or ports::WordHost when the application answers for that one's own
// interface, otherwise an application of no known kind; null for null.
[[nodiscard]] std::shared_ptr<ports::HostApplication> HostOf(IDispatch* application);

// A ports::Workbook or ports::WordDocument when the document, or what the given part of one belongs
// to, answers for that one's own interface, otherwise a document of no known kind; null for null.
[[nodiscard]] std::shared_ptr<ports::HostDocument> DocumentOf(IDispatch* document);

// The applications that have registered themselves as running.
class AutomationApplications final : public ports::RunningApplications {
 public:
    // Throws Error 429 when there is none.
    std::shared_ptr<ports::HostApplication> GetRunning(const std::string& className) override;
};

}  // namespace krv::windows
