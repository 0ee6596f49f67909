#include "bench/shared/windows/OfficeAutomation.h"

#include "common/Error.h"

namespace krv::bench {
namespace {

constexpr std::int32_t ObjectRequired = 424;

}  // namespace

void OfficeAutomation::End() noexcept {
    m_isRunning = false;
    m_applicationObject.Reset();
}

OfficeApplication& OfficeAutomation::Office() const {
    RequireRunning();
    return m_office;
}

ProgramWindow& OfficeAutomation::Window() const {
    RequireRunning();
    return m_window;
}

void OfficeAutomation::RequireRunning() const {
    if (!m_isRunning) {
        throw Error(ObjectRequired, "The application has ended.");
    }
}

}  // namespace krv::bench
