// OfficeObjects: the automation objects of an application, with a window or without one.
#pragma once

#include <memory>

#include "bench/shared/windows/AutomationObject.h"

namespace krv::bench {

template <class ApplicationObject>
class OfficeObjects {
 public:
    // Both outlive this.
    explicit OfficeObjects(OfficeApplication& application, ProgramWindow& window)
        : m_automation(std::make_shared<OfficeAutomation>(application, window,
                                                          &ApplicationObject::NewDocumentObject)),
          m_object(windows::MakeCom<ApplicationObject>(m_automation)) {
        m_automation->SetApplicationObject(Application());
    }
    OfficeObjects(const OfficeObjects&) = delete;
    OfficeObjects& operator=(const OfficeObjects&) = delete;
    ~OfficeObjects() { End(); }
    // From now on each call throws Error 424.
    void End() { m_automation->End(); }

    [[nodiscard]] IDispatch* Application() const { return m_object.Get(); }
    [[nodiscard]] OfficeAutomation& Automation() const { return *m_automation; }

 private:
    std::shared_ptr<OfficeAutomation> m_automation;
    Microsoft::WRL::ComPtr<ApplicationObject> m_object;
};

}  // namespace krv::bench
