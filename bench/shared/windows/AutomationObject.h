// AutomationObject: a late-bound object of one of the bench's applications, whose members stand in
// a table. Every failure becomes an exception with number, description and source. As with an
// application in US English, calls with another locale fail.
//
// Object has a static function Members() with a constant table of Member<Object>. Rows that several
// classes have alike stand in a base class and are put in front of a table with Joined.
// Apartment-threaded.
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <string_view>

#include "bench/shared/windows/MemberCall.h"
#include "bench/shared/windows/OfficeAutomation.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/ComObject.h"

namespace krv::bench {

// Arguments for a member that takes none go to the default member of the object that it returns.
enum class MemberKind : std::uint8_t { ReadOnly, ReadWrite, TakesArguments };

template <class Object>
struct Member {
    std::wstring_view name = {};
    _variant_t (Object::*work)(const MemberCall&) = nullptr;
    MemberKind kind = MemberKind::ReadOnly;
    bool isDefault = false;
};

template <class Object, std::size_t Shared, std::size_t Own>
[[nodiscard]] constexpr auto Joined(const std::array<Member<Object>, Shared>& shared,
                                    const std::array<Member<Object>, Own>& own) {
    std::array<Member<Object>, Shared + Own> all{};
    std::copy(own.begin(), own.end(), std::copy(shared.begin(), shared.end(), all.begin()));
    return all;
}

// Whether a caller's name is the member's; case doesn't count.
[[nodiscard]] bool IsMemberName(std::wstring_view name, std::wstring_view wanted);
// The source is the program's name.
[[nodiscard]] HRESULT ReportException(EXCEPINFO* exception, const char* source) noexcept;
// An object as a member returns it.
[[nodiscard]] inline _variant_t AsVariant(IDispatch* object) {
    return _variant_t(object);
}
// Makes an object, and returns it as a member does.
template <class Object, class... Arguments>
[[nodiscard]] _variant_t NewObject(Arguments&&... arguments) {
    return AsVariant(windows::MakeCom<Object>(std::forward<Arguments>(arguments)...).Get());
}
// Calls the default member of the object in the value with these arguments.
[[nodiscard]] _variant_t CallDefault(const _variant_t& object, DISPPARAMS& parameters);

inline constexpr LCID OwnLocale = 1033;

// How the application refuses calls while a cell is edited.
inline constexpr auto CallIgnored = static_cast<HRESULT>(0x800AC472);

// Interfaces have no destructors: objects are destroyed by their last Release.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

template <class Object, class... Interfaces>
class AutomationObject : public windows::ComObject<IDispatch, Interfaces...> {
 public:
    explicit AutomationObject(std::shared_ptr<OfficeAutomation> automation)
        : m_automation(std::move(automation)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
        return DISP_E_BADINDEX;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        std::fill_n(ids, count, DISPID_UNKNOWN);
        if (!IsKnown(locale)) {
            return TYPE_E_INVDATAREAD;
        }
        for (const Member<Object>& member : Object::Members()) {
            if (count > 0 && IsMemberName(member.name, names[0])) {
                ids[0] = IdOf(member);
            }
        }
        // Parameters have no names here.
        return count == 1 && ids[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT*) override {
        if (!IsKnown(locale)) {
            return TYPE_E_INVDATAREAD;
        }
        const Member<Object>* member = Find(id, flags);
        if (member == nullptr) {
            return DISP_E_MEMBERNOTFOUND;
        }
        if (m_automation->IsBusy()) {
            return CallIgnored;
        }
        try {
            _variant_t value = Run(*member, flags, *parameters);
            if (result != nullptr) {
                *result = value.Detach();
            }
            return S_OK;
        } catch (...) {
            return ReportException(exception, m_automation->Traits().program);
        }
    }

 protected:
    [[nodiscard]] const std::shared_ptr<OfficeAutomation>& Automation() const {
        return m_automation;
    }
    [[nodiscard]] OfficeApplication& Application() const { return m_automation->Application(); }
    [[nodiscard]] const OfficeTraits& Traits() const { return m_automation->Traits(); }

    _variant_t GetApplication(const MemberCall&) { return m_automation->ApplicationObject(); }

 private:
    // Macros and script engines call in no language.
    static bool IsKnown(LCID locale) { return locale == OwnLocale || locale == LOCALE_NEUTRAL; }

    static DISPID IdOf(const Member<Object>& member) {
        const auto place = static_cast<DISPID>(&member - Object::Members().data()) + 1;
        return member.isDefault ? DISPID_VALUE : place;
    }

    static const Member<Object>* Find(DISPID id, WORD flags) {
        const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        for (const Member<Object>& member : Object::Members()) {
            if (IdOf(member) == id && (!isPut || member.kind == MemberKind::ReadWrite)) {
                return &member;
            }
        }
        return nullptr;
    }

    _variant_t Run(const Member<Object>& member, WORD flags, DISPPARAMS& parameters) {
        // The work may let go of this object.
        const Microsoft::WRL::ComPtr<IDispatch> kept(this);
        auto& object = static_cast<Object&>(*this);
        const MemberCall call(flags, parameters);
        if (call.Count() == 0 || member.kind == MemberKind::TakesArguments || call.IsPut()) {
            return (object.*member.work)(call);
        }
        const DISPPARAMS none{};
        return CallDefault((object.*member.work)(MemberCall(flags, none)), parameters);
    }

    std::shared_ptr<OfficeAutomation> m_automation;
};

#pragma GCC diagnostic pop

}  // namespace krv::bench
