#include "windows/office/AutomationWorkbook.h"

#include "common/AsKind.h"
#include "windows/automation/Query.h"
#include "windows/office/ApplicationObjects.h"

namespace krv::windows {
std::string AutomationWorkbook::Name() {
    return m_workbook.GetText(L"Name");
}

std::shared_ptr<ports::ExcelHost> AutomationWorkbook::Application() {
    return AsKind<ports::ExcelHost>(HostOf(m_workbook.GetObject(L"Application").Object()));
}

bool AutomationWorkbook::IsSame(ports::Workbook& other) {
    return Query<IUnknown>(AutomationBehind(other)).Get() == Query<IUnknown>(Automation()).Get() ||
           other.Name() == Name();
}

}  // namespace krv::windows
