// OfficeObject: a late-bound object of one of the bench's applications, whose members stand in a
// table. Every failure becomes an exception with number, description and source.
//
// Object has a static function Members() with a constant table of Member<Object>.
// Apartment-threaded.
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "bench/book/windows/BookAutomation.h"
#include "bench/shared/windows/MemberCall.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/ComObject.h"

namespace krv::bench {

enum class MemberKind : std::uint8_t { ReadOnly, ReadWrite, Method };

template <class Object>
struct Member {
    std::wstring_view name;
    _variant_t (Object::*work)(const MemberCall&);
    MemberKind kind = MemberKind::ReadOnly;
    // With commas between. Arguments for a member without parameters go to the default member of
    // the object that it returns.
    std::wstring_view parameters = {};
    // DISPID_VALUE for the default member, DISPID_NEWENUM for the enumerator; 0 numbers by place.
    bool isDefault = false;
    DISPID id = 0;
};

// What the tables of all objects have in common.
[[nodiscard]] bool IsMemberName(std::wstring_view name, std::wstring_view wanted);
// The place of a parameter's name in its list, or DISPID_UNKNOWN.
[[nodiscard]] DISPID ParameterPlace(std::wstring_view parameters, std::wstring_view name);
// The source is the program's name.
[[nodiscard]] HRESULT ReportException(EXCEPINFO* exception, const char* source) noexcept;
// Calls the default member of the object in the value with these arguments.
[[nodiscard]] _variant_t CallDefault(const _variant_t& object, DISPPARAMS& parameters);

// How the application refuses calls while a cell is edited.
inline constexpr auto CallIgnored = static_cast<HRESULT>(0x800AC472);

// Interfaces have no destructors: objects are destroyed by their last Release.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Shared is what leads the objects to their application.
template <class Shared, class Object, class... Interfaces>
class OfficeObject : public windows::ComObject<IDispatch, Interfaces...> {
 public:
    explicit OfficeObject(std::shared_ptr<Shared> automation)
        : m_automation(std::move(automation)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
        return DISP_E_BADINDEX;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override {
        std::fill_n(ids, count, DISPID_UNKNOWN);
        const Member<Object>* member = nullptr;
        for (const Member<Object>& candidate : Object::Members()) {
            if (count > 0 && IsMemberName(candidate.name, names[0])) {
                member = &candidate;
                ids[0] = IdOf(candidate);
            }
        }
        HRESULT result = member != nullptr ? S_OK : DISP_E_UNKNOWNNAME;
        for (UINT at = 1; member != nullptr && at < count; ++at) {
            ids[at] = ParameterPlace(member->parameters, names[at]);
            result = ids[at] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : result;
        }
        return result;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override {
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
            return ReportException(exception, m_automation->ProgramName());
        }
    }

 protected:
    [[nodiscard]] const std::shared_ptr<Shared>& Automation() const { return m_automation; }
    [[nodiscard]] OfficeApplication& Office() const { return m_automation->Office(); }

    _variant_t GetApplication(const MemberCall&) { return m_automation->ApplicationObject(); }

    template <class Created>
    [[nodiscard]] static _variant_t Give(const Microsoft::WRL::ComPtr<Created>& object) {
        return _variant_t(static_cast<IDispatch*>(object.Get()));
    }

 private:
    static DISPID IdOf(const Member<Object>& member) {
        const auto place = static_cast<DISPID>(&member - Object::Members().data()) + 1;
        return member.isDefault ? DISPID_VALUE : member.id != 0 ? member.id : place;
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
        if (call.Count() == 0 || !member.parameters.empty() || call.IsPut()) {
            return (object.*member.work)(call);
        }
        const DISPPARAMS none{};
        return CallDefault((object.*member.work)(MemberCall(flags, none)), parameters);
    }

    std::shared_ptr<Shared> m_automation;
};

// An object of krvbook.
template <class Object, class... Interfaces>
class AutomationObject : public OfficeObject<BookAutomation, Object, Interfaces...> {
 public:
    using OfficeObject<BookAutomation, Object, Interfaces...>::OfficeObject;

 protected:
    [[nodiscard]] BookApplication& Application() const { return this->Automation()->Application(); }
};

#pragma GCC diagnostic pop

}  // namespace krv::bench
