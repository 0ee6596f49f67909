// ComGuard: the one edge where the core's errors become what automation callers see.
//
// Every COM method is noexcept and runs its body through Guarded. An Error becomes an HRESULT and
// error information with number, source and description; anything else becomes E_UNEXPECTED with
// its text, and memory exhaustion E_OUTOFMEMORY.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

#include <exception>
#include <new>
#include <string>

#include "common/Error.h"

namespace krv::windows {

// Error numbers of the classic run-time library are given to automation callers as
// FACILITY_CONTROL codes, which script engines and the classic language turn back into the number.
[[nodiscard]] HRESULT ToHresult(std::int32_t number) noexcept;
// The number that a caller of the core sees for a failed call outward: the reverse of ToHresult.
[[nodiscard]] std::int32_t ToErrorNumber(HRESULT result) noexcept;

// What a failed result means, in words.
[[nodiscard]] std::string DescribeResult(HRESULT result);
// The same where there are words for it; empty where the result is no more than a number.
[[nodiscard]] std::string DescribeKnownResult(HRESULT result);

// Leaves error information for the caller and returns the result.
HRESULT ReportError(HRESULT result, const std::string& description, const std::string& source,
                    const IID& interfaceId) noexcept;

template <class Body>
HRESULT Guarded(const IID& interfaceId, const char* source, Body&& body) noexcept {
    try {
        body();
        return S_OK;
    } catch (const Error& error) {
        return ReportError(ToHresult(error.Number()), error.Description(),
                           error.Source().empty() ? source : error.Source(), interfaceId);
    } catch (const std::bad_alloc&) {
        return ReportError(E_OUTOFMEMORY, "There is not enough memory.", source, interfaceId);
    } catch (const std::exception& error) {
        return ReportError(E_UNEXPECTED, error.what(), source, interfaceId);
    } catch (...) {
        return ReportError(E_UNEXPECTED, "An unknown error occurred.", source, interfaceId);
    }
}

// Throws the Error that a failed call outward stands for, with the other side's description where
// it left one. The called object says whether the error information is its own.
void ThrowIfFailed(HRESULT result, IUnknown* called = nullptr, const IID& interfaceId = IID_NULL);

}  // namespace krv::windows
