#include "windows/office/AutomationWorkbook.h"

#include <wrl/client.h>

#include "common/AsKind.h"
#include "windows/office/HostObjects.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

ComPtr<IUnknown> IdentityOf(IUnknown* object) {
    ComPtr<IUnknown> identity;
    object->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(identity.GetAddressOf()));
    return identity;
}

}  // namespace

std::string AutomationWorkbook::Name() {
    return m_workbook.GetText(L"Name");
}

std::shared_ptr<ports::ExcelHost> AutomationWorkbook::Application() {
    return AsKind<ports::ExcelHost>(HostOf(m_workbook.GetObject(L"Application").Object()));
}

bool AutomationWorkbook::IsSame(ports::Workbook& other) {
    return IdentityOf(AutomationBehind(other)).Get() == IdentityOf(Automation()).Get() ||
           other.Name() == Name();
}

}  // namespace krv::windows
