#include "windows/addin/HostTraits.h"

#include <array>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "windows/automation/ComGuard.h"
#include "windows/extensibility/OfficeEvents.h"

namespace krv::windows {
namespace {

constexpr std::array ExcelChanges{ExcelEvent::NewWorkbook,      ExcelEvent::WorkbookOpen,
                                  ExcelEvent::WorkbookActivate, ExcelEvent::WorkbookDeactivate,
                                  ExcelEvent::WindowActivate,   ExcelEvent::WindowDeactivate};
constexpr std::array WordChanges{WordEvent::DocumentChange, WordEvent::DocumentOpen,
                                 WordEvent::NewDocument, WordEvent::WindowActivate,
                                 WordEvent::WindowDeactivate};

const HostTraits Excel{.name = "Excel",
                       .documents = L"Workbooks",
                       .activeDocument = L"ActiveWorkbook",
                       .windowDocument = L"Parent",
                       .windowClass = L"XLMAIN",
                       .events = ExcelEventsId,
                       .beforeClose = ExcelEvent::WorkbookBeforeClose,
                       .beforeSave = ExcelEvent::WorkbookBeforeSave,
                       .changes = ExcelChanges,
                       .hasSheets = true,
                       .needsActivation = false,
                       .hasBarTemplate = false};
const HostTraits Word{.name = "Word",
                      .documents = L"Documents",
                      .activeDocument = L"ActiveDocument",
                      .windowDocument = L"Document",
                      .windowClass = L"OpusApp",
                      .events = WordEventsId,
                      .beforeClose = WordEvent::DocumentBeforeClose,
                      .beforeSave = WordEvent::DocumentBeforeSave,
                      .changes = WordChanges,
                      .hasSheets = false,
                      .needsActivation = true,
                      .hasBarTemplate = true};

bool AnswersFor(IUnknown* object, const IID& id) {
    Microsoft::WRL::ComPtr<IUnknown> own;
    return object != nullptr &&
           SUCCEEDED(object->QueryInterface(id, reinterpret_cast<void**>(own.GetAddressOf())));
}

// The first visible window of the class that this thread has.
HWND OwnWindowOf(const wchar_t* windowClass) {
    HWND found = nullptr;
    while ((found = FindWindowExW(nullptr, found, windowClass, nullptr)) != nullptr) {
        if (GetWindowThreadProcessId(found, nullptr) == GetCurrentThreadId() &&
            IsWindowVisible(found) != FALSE) {
            break;
        }
    }
    return found;
}

HWND WindowIn(const LateBound& object) {
    HWND window = nullptr;
    TrapErrors(
        [&] { window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(object.GetLong(L"Hwnd"))); });
    return IsWindow(window) != FALSE ? GetAncestor(window, GA_ROOT) : nullptr;
}

}  // namespace

const HostTraits& TraitsOf(IDispatch* application) {
    if (AnswersFor(application, ExcelApplicationId)) {
        return Excel;
    }
    if (AnswersFor(application, WordApplicationId)) {
        return Word;
    }
    throw Error(ErrorNumber::ActionNotSupported,
                "The add-in was loaded by an application that is neither Excel nor Word.");
}

// Word refuses the question without a document, and while Protected View is in front.
LateBound ActiveDocumentOf(const LateBound& application, const HostTraits& traits) {
    LateBound active;
    const auto failure = FailureOf([&] {
        if (application.GetObject(traits.documents).GetLong(L"Count") > 0) {
            active = application.GetObject(traits.activeDocument);
        }
    });
    if (failure && IsBusy(*failure)) {
        throw Error(*failure);
    }
    return active;
}

// Older versions have no handles of windows, or one for the whole application.
HWND ActiveWindowOf(const LateBound& application, const HostTraits& traits) {
    LateBound active;
    TrapErrors([&] { active = application.GetObject(L"ActiveWindow"); });
    for (const LateBound& object : {active, application}) {
        if (const HWND window = object ? WindowIn(object) : nullptr; window != nullptr) {
            return window;
        }
    }
    return OwnWindowOf(traits.windowClass);
}

bool IsBusy(const Error& error) {
    // Excel while a cell is edited or a dialog is open.
    constexpr std::int32_t CallIgnored = 0xC472;
    constexpr auto ServerBusy = static_cast<std::int32_t>(RPC_E_SERVERCALL_RETRYLATER);
    constexpr auto Rejected = static_cast<std::int32_t>(RPC_E_CALL_REJECTED);
    const std::int32_t number = error.Number();
    return number == CallIgnored || number == ServerBusy || number == Rejected;
}

bool MayBeBusy(const Error& error) {
    // Excel for whatever it can't do at present.
    constexpr std::int32_t ApplicationError = 0x3EC;
    return error.Number() == ApplicationError;
}

}  // namespace krv::windows
