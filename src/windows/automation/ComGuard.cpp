#include "windows/automation/ComGuard.h"

#include <wrl/client.h>

#include "common/Hexadecimal.h"
#include "windows/automation/Variants.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

constexpr std::int32_t LastClassicNumber = 0xFFFF;

// How an application refuses calls while a cell is being edited or a dialog of its own is open.
bool IsBusy(HRESULT result) {
    constexpr auto Ignored = static_cast<HRESULT>(0x800AC472);
    return result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER ||
           result == RPC_E_SERVERCALL_REJECTED || result == Ignored;
}

// How calls end whose receiver's process is gone.
bool IsGone(HRESULT result) {
    return result == RPC_E_DISCONNECTED || result == RPC_E_SERVER_DIED ||
           result == RPC_E_SERVER_DIED_DNE || result == CO_E_OBJNOTCONNECTED ||
           result == HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE) ||
           result == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED) ||
           result == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE);
}

// The error information that the called object left for this very call, or null.
ComPtr<IErrorInfo> OwnErrorInfo(IUnknown* called, const IID& interfaceId) {
    ComPtr<IErrorInfo> information;
    if (GetErrorInfo(0, &information) != S_OK) {
        return nullptr;
    }
    ComPtr<ISupportErrorInfo> support;
    if (called == nullptr ||
        FAILED(called->QueryInterface(IID_ISupportErrorInfo,
                                      reinterpret_cast<void**>(support.GetAddressOf()))) ||
        support->InterfaceSupportsErrorInfo(interfaceId) != S_OK) {
        return nullptr;
    }
    return information;
}

}  // namespace

HRESULT ToHresult(std::int32_t number) noexcept {
    if (number > 0 && number <= LastClassicNumber) {
        return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
    }
    return number < 0 ? static_cast<HRESULT>(number) : E_FAIL;
}

std::int32_t ToErrorNumber(HRESULT result) noexcept {
    return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result)
                                                        : static_cast<std::int32_t>(result);
}

std::string DescribeResult(HRESULT result) {
    const std::string known = DescribeKnownResult(result);
    return known.empty() ? "Automation error 0x" + Hexadecimal(static_cast<std::uint32_t>(result))
                         : known;
}

std::string DescribeKnownResult(HRESULT result) {
    if (IsBusy(result)) {
        return "The application is busy and can't answer.  Finish what it is doing, for instance "
               "editing a cell or answering a dialog box, and try again.";
    }
    if (IsGone(result)) {
        return "The application doesn't answer any more: it was closed or has failed.  Start it "
               "again and repeat the command there.";
    }
    wchar_t* text = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring wide(text != nullptr ? text : L"", length);
    LocalFree(text);
    while (!wide.empty() && (wide.back() == L'\r' || wide.back() == L'\n')) {
        wide.pop_back();
    }
    return ToUtf8(wide);
}

HRESULT ReportError(HRESULT result, const std::string& description, const std::string& source,
                    const IID& interfaceId) noexcept {
    try {
        ComPtr<ICreateErrorInfo> creation;
        ComPtr<IErrorInfo> information;
        if (SUCCEEDED(CreateErrorInfo(&creation)) &&
            SUCCEEDED(creation->QueryInterface(
                IID_IErrorInfo, reinterpret_cast<void**>(information.GetAddressOf())))) {
            creation->SetDescription(ToWide(description).data());
            creation->SetSource(ToWide(source).data());
            creation->SetGUID(interfaceId);
            SetErrorInfo(0, information.Get());
        }
    } catch (const std::exception&) {
        // The result alone still says that the call failed.
    }
    return result;
}

void ThrowIfFailed(HRESULT result, IUnknown* called, const IID& interfaceId) {
    if (SUCCEEDED(result)) {
        return;
    }
    std::string description;
    std::string source;
    if (const ComPtr<IErrorInfo> information = OwnErrorInfo(called, interfaceId); information) {
        _bstr_t text;
        information->GetDescription(text.GetAddress());
        description = TextOf(text);
        information->GetSource(text.GetAddress());
        source = TextOf(text);
    }
    if (description.empty()) {
        description = DescribeResult(result);
    }
    throw Error(ToErrorNumber(result), description, source);
}

}  // namespace krv::windows
