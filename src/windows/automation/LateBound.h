// LateBound: calls to an automation object by member name, as the suite's components and the
// Office applications are reached. Failures become Error with the other side's description, or with
// a sentence that says what was asked where the other side gives none.
//
// Names, numbers and dates in texts are those of US English, whatever the user's settings are: an
// application knows its members by the names of its own language alone.
//
// For the apartment's thread. Copies share the object.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace krv::windows {

class LateBound {
 public:
    LateBound() = default;
    // Takes any object; throws Error when it offers no automation.
    explicit LateBound(IUnknown* object);
    // The object in a VARIANT; throws Error 13 when it holds none.
    explicit LateBound(const VARIANT& object);

    // Calls through this very interface: an object may offer several, each with its own members.
    [[nodiscard]] static LateBound Through(IDispatch& members);

    // Creates a component by its ProgID. Throws Error 429 when that fails, with a description that
    // names the component and, when it isn't installed, says what to do.
    [[nodiscard]] static LateBound Create(const wchar_t* progId);

    [[nodiscard]] explicit operator bool() const { return m_object != nullptr; }
    [[nodiscard]] IDispatch* Object() const { return m_object.Get(); }

    [[nodiscard]] _variant_t Get(const wchar_t* name) const;
    [[nodiscard]] LateBound GetObject(const wchar_t* name) const;
    [[nodiscard]] std::string GetText(const wchar_t* name) const;
    [[nodiscard]] long GetLong(const wchar_t* name) const;
    [[nodiscard]] bool GetBool(const wchar_t* name) const;

    // The object has a member of this name.
    [[nodiscard]] bool Has(const wchar_t* name) const;

    void Put(const wchar_t* name, const _variant_t& value) const;
    // Hands over an object by reference; null takes it back.
    void PutObject(const wchar_t* name, IDispatch* object) const;

    // Calls a method or reads a property with arguments, in the order in which they are written.
    _variant_t Call(const wchar_t* name, std::initializer_list<_variant_t> arguments = {}) const;
    [[nodiscard]] LateBound CallObject(const wchar_t* name,
                                       std::initializer_list<_variant_t> arguments = {}) const;
    // The same with arguments that the other side may change.
    _variant_t CallByReference(const wchar_t* name, std::vector<VARIANT>& arguments) const;

 private:
    HRESULT FindMember(const wchar_t* name, DISPID& id) const;
    _variant_t Invoke(const wchar_t* name, WORD flags, std::vector<VARIANT>& reversed) const;

    Microsoft::WRL::ComPtr<IDispatch> m_object;
};

// The value of a call as the kind that is expected. Each throws Error when it can't be had as such.
[[nodiscard]] std::string TextOf(const VARIANT& value);
[[nodiscard]] std::int32_t LongOf(const VARIANT& value);
[[nodiscard]] double DoubleOf(const VARIANT& value);
[[nodiscard]] bool BoolOf(const VARIANT& value);

}  // namespace krv::windows
