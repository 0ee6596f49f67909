// SuiteObject: a component of the suite: a dual interface whose members run behind the one guard.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <KRVSuite.h>

#include <utility>

#include "ports/suite/ProgIds.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/DispatchObject.h"
#include "windows/automation/Variants.h"

namespace krv::suite {

// The names that components are created by are the sources of their errors.
namespace ProgId = ports::ProgId;

// A guard for the members of objects whose base class isn't SuiteObject.
template <class Dual>
class MemberGuard {
 public:
    explicit MemberGuard(const char* source) : m_source(source) {}

    template <class Work>
    HRESULT Run(Work&& work) const noexcept {
        return windows::Guarded(__uuidof(Dual), m_source, std::forward<Work>(work));
    }
    // The work's result is the member's.
    template <class Result, class Work>
    HRESULT Answer(Result* result, Work&& work) const noexcept {
        return result == nullptr ? E_POINTER : Run([&] { *result = work(); });
    }

 private:
    const char* m_source;
};

template <class Dual, class... Others>
class SuiteObject : public windows::DispatchObject<Dual, Others...> {
 protected:
    // The source is a static text.
    explicit SuiteObject(const char* source) : m_guard(source) {}

    [[nodiscard]] const MemberGuard<Dual>& Guard() const { return m_guard; }

 private:
    MemberGuard<Dual> m_guard;
};

// A new object with one reference. Throws std::bad_alloc and what the constructor throws.
template <class Object, class... Arguments>
[[nodiscard]] IDispatch* NewObject(Arguments&&... arguments) {
    return static_cast<IDispatch*>(
        windows::MakeCom<Object>(std::forward<Arguments>(arguments)...).Detach());
}

[[nodiscard]] inline VARIANT_BOOL ToVariantBool(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace krv::suite
