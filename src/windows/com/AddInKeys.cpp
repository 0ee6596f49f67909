#include "windows/com/AddInKeys.h"

#include <string>

#include "windows/base/WideText.h"
#include "windows/com/ComModule.h"
#include "windows/com/RegistryKey.h"

namespace krv::windows {
namespace {

// The application loads it whenever it starts.
constexpr DWORD AtStartup = 3;

}  // namespace

void RegisterAddIns(HKEY root) {
    for (const OfficeAddIn& addIn : ThisComModule().addIns) {
        const RegistryKey software(root, L"Software");
        const std::wstring key = std::wstring(L"Microsoft\\Office\\") + addIn.application +
                                 L"\\Addins\\" + ToWide(addIn.progId);
        software.Write(key, L"FriendlyName", std::wstring(addIn.name));
        software.Write(key, L"Description", std::wstring(addIn.description));
        software.Write(key, L"LoadBehavior", AtStartup);
    }
}

void UnregisterAddIns(HKEY root, const std::function<bool(const char* progId)>& isFree) {
    for (const OfficeAddIn& addIn : ThisComModule().addIns) {
        if (!isFree(addIn.progId)) {
            continue;
        }
        const RegistryKey software(root, L"Software");
        const std::wstring application = std::wstring(L"Microsoft\\Office\\") + addIn.application;
        software.DeleteTree(application + L"\\Addins\\" + ToWide(addIn.progId));
        for (const std::wstring& key :
             {application + L"\\Addins", application, std::wstring(L"Microsoft\\Office"),
              std::wstring(L"Microsoft")}) {
            software.DeleteWhenEmpty(key);
        }
    }
}

}  // namespace krv::windows
