// ScriptedObject: an automation object made up by a test: properties that keep what is put into
// them, members that run a function, events, and failures. It is as strict as an application in US
// English: calls with another locale fail, except while a script runs, whose engine has its own.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <string>
#include <vector>

#include "windows/automation/ComObject.h"

namespace krv::tests {

// Thrown by a member: the exception that the caller receives.
struct HostException {
    HRESULT Result;
    std::wstring Description;
    std::wstring Source;
};
// Thrown by a member: the whole call fails with this.
struct CallFailure {
    HRESULT Result;
};

struct ScriptedCall {
    // In the order in which they are written; not owned.
    std::vector<VARIANT> Arguments;
    WORD Flags = 0;
};

// How a source gives an event's arguments.
enum class EventForm : std::uint8_t { ByPosition, Named };

class ScriptedObject final
    : public windows::ComObject<IDispatch, IConnectionPointContainer, IConnectionPoint> {
 public:
    using Member = std::function<_variant_t(const ScriptedCall&)>;

    // Found by name, members first. Objects are put by reference as by value.
    std::map<std::wstring, Member> Members;
    std::map<std::wstring, _variant_t> Properties;
    // Further interfaces that it answers for, with these objects (null: with itself).
    std::map<std::string, Microsoft::WRL::ComPtr<IUnknown>> Answers;
    static inline bool ScriptRuns = false;
    // The events that it offers; none while this is IID_NULL.
    IID Events = IID_NULL;
    Microsoft::WRL::ComPtr<IUnknown> Sink;

    void Answer(const IID& id, IUnknown* with = nullptr) { Answers[KeyOf(id)] = with; }

    // Raises an event, and returns what the receiver answers.
    HRESULT Raise(DISPID event, std::vector<VARIANT> arguments = {},
                  EventForm form = EventForm::ByPosition) {
        const auto receiver = Sink;
        Microsoft::WRL::ComPtr<IDispatch> sink;
        receiver->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(sink.GetAddressOf()));
        std::vector<DISPID> names;
        if (form == EventForm::Named) {
            names.resize(arguments.size());
            std::iota(names.begin(), names.end(), 0);
        } else {
            std::reverse(arguments.begin(), arguments.end());
        }
        DISPPARAMS parameters{arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                              static_cast<UINT>(names.size())};
        return sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                            nullptr, nullptr, nullptr);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const auto answer = Answers.find(KeyOf(id));
        if (answer != Answers.end() && answer->second) {
            *object = answer->second.Get();
            answer->second->AddRef();
            return S_OK;
        }
        return ComObject::QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID locale,
                                            DISPID* ids) override {
        const std::wstring name(names[0]);
        if (locale != OwnLocale && !ScriptRuns) {
            return TYPE_E_INVDATAREAD;
        }
        if (Members.count(name) == 0 && Properties.count(name) == 0) {
            *ids = DISPID_UNKNOWN;
            return DISP_E_UNKNOWNNAME;
        }
        m_names.push_back(name);
        *ids = static_cast<DISPID>(m_names.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT*) override {
        if (locale != OwnLocale && !ScriptRuns) {
            return TYPE_E_INVDATAREAD;
        }
        ScriptedCall call;
        call.Arguments.assign(std::reverse_iterator(parameters->rgvarg + parameters->cArgs),
                              std::reverse_iterator(parameters->rgvarg));
        call.Flags = flags;
        try {
            _variant_t answer = Run(m_names[static_cast<std::size_t>(id) - 1], call);
            if (result != nullptr) {
                *result = answer.Detach();
            }
            return S_OK;
        } catch (const HostException& failure) {
            exception->scode = failure.Result;
            exception->bstrDescription = SysAllocString(failure.Description.c_str());
            exception->bstrSource = SysAllocString(failure.Source.c_str());
            return DISP_E_EXCEPTION;
        } catch (const CallFailure& failure) {
            return failure.Result;
        }
    }

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        if (id != Events) {
            return CONNECT_E_NOCONNECTION;
        }
        AddRef();
        *point = this;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override {
        *id = Events;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        *cookie = 1;
        return sink->QueryInterface(Events, reinterpret_cast<void**>(Sink.GetAddressOf()));
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override {
        Sink.Reset();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 protected:
    void* FindInterface(REFIID id) noexcept override {
        if (Answers.count(KeyOf(id)) != 0) {
            return static_cast<IDispatch*>(this);
        }
        const bool isEvents = id == IID_IConnectionPointContainer || id == IID_IConnectionPoint;
        return isEvents && Events == IID_NULL ? nullptr : ComObject::FindInterface(id);
    }

 private:
    static constexpr LCID OwnLocale = 1033;

    static std::string KeyOf(const IID& id) {
        return {reinterpret_cast<const char*>(&id), sizeof id};
    }
    _variant_t Run(const std::wstring& name, const ScriptedCall& call) {
        if (const auto member = Members.find(name); member != Members.end()) {
            return member->second(call);
        }
        _variant_t& property = Properties[name];
        if ((call.Flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
            property = call.Arguments.at(0);
            return {};
        }
        return property;
    }

    std::vector<std::wstring> m_names;
};

using ScriptedPointer = Microsoft::WRL::ComPtr<ScriptedObject>;

inline ScriptedPointer NewScripted(std::map<std::wstring, _variant_t> properties = {}) {
    ScriptedPointer object = windows::MakeCom<ScriptedObject>();
    object->Properties = std::move(properties);
    return object;
}

inline _variant_t ObjectVariant(const ScriptedPointer& object) {
    return _variant_t(static_cast<IDispatch*>(object.Get()));
}

}  // namespace krv::tests
