// What KRVAddIn.dll is made of.
#include <windows.h>
// After windows.h, which it needs.
#include <KRVAddIn.h>

#include <array>

#include "windows/addin/AddIn.h"
#include "windows/com/ComModule.h"

namespace krv::windows {
namespace {

IUnknown* NewAddIn() {
    return static_cast<IKRVAddIn*>(MakeCom<AddIn>().Detach());
}

constexpr const char* ProgId = "KRVAddIn.Connect";
constexpr const wchar_t* Title = L"Tallyport for TQL/KRV";
constexpr const wchar_t* Description =
    L"Toolbar of TQL/KRV signal generators: settings, waveform downloads, screen images";

const std::array Classes{ComClass{__uuidof(::KRVAddIn), ProgId, Title, NewAddIn}};
constexpr std::array AddIns{OfficeAddIn{L"Excel", ProgId, Title, Description},
                            OfficeAddIn{L"Word", ProgId, Title, Description}};

}  // namespace

const ComModule& ThisComModule() {
    static const ComModule module{"KRVAddIn", Classes, AddIns};
    return module;
}

}  // namespace krv::windows
