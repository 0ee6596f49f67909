#include "suite/windows/states/StateInfoObject.h"

#include <ocidl.h>

#include "common/Error.h"
#include "suite/windows/SuiteObject.h"
#include "windows/automation/KeptVariant.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/PropertyBags.h"
#include "windows/automation/Query.h"

namespace krv::suite {
namespace {

using Microsoft::WRL::ComPtr;
using suite::NamedState;
using suite::StateBook;
using windows::LateBound;
using windows::NewText;

// The suite's ISetupInterface. Its members are called late bound.
constexpr IID SetupInterfaceId{
    0x7c1f0c52, 0x6f0e, 0x4a1f, {0x9a, 0x36, 0x2f, 0x6d, 0x1a, 0x3b, 0x7a, 0x02}};

DateValue LocalTime() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    DateValue date;
    SystemTimeToVariantTime(&now, &date.days);
    return date;
}

class AutomationSource final : public suite::SetupSource {
 public:
    // A client may pass another interface of the control; this one is used where there is one.
    explicit AutomationSource(IDispatch* setup) : m_given(setup) {
        ComPtr<IDispatch> own;
        setup->QueryInterface(SetupInterfaceId, reinterpret_cast<void**>(own.GetAddressOf()));
        m_setup = LateBound::Through(own ? *own.Get() : *setup);
    }
    [[nodiscard]] const ComPtr<IDispatch>& Given() const { return m_given; }

    std::string Model() override { return m_setup.GetText(L"Model"); }
    std::string Version() override { return m_setup.GetText(L"Version"); }
    Value Capture() override { return windows::KeepVariant(m_setup.Get(L"SetupValue")); }
    void Restore(const Value& snapshot) override {
        m_setup.Put(L"SetupValue", windows::GiveBackVariant(snapshot));
    }

 private:
    ComPtr<IDispatch> m_given;
    LateBound m_setup;
};

class StateInfoObject final
    : public SuiteObject<ICvnStateInfo, IPersistPropertyBag, IStateBookAccess> {
 public:
    StateInfoObject() : SuiteObject(ProgId::StateInfo) {}

    HRESULT STDMETHODCALLTYPE get_SetupInterface(IDispatch** setup) override {
        return Guard().Answer(setup, [&] {
            return m_source ? ComPtr<IDispatch>(m_source->Given()).Detach() : nullptr;
        });
    }
    HRESULT STDMETHODCALLTYPE put_SetupInterface(IDispatch* setup) override {
        return Guard().Run([&] {
            m_source = setup != nullptr ? std::make_shared<AutomationSource>(setup) : nullptr;
            m_book->SetSource(m_source);
        });
    }
    HRESULT STDMETHODCALLTYPE putref_SetupInterface(IDispatch* setup) override {
        return put_SetupInterface(setup);
    }
    HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override {
        return Guard().Answer(count,
                              [&] { return static_cast<LONG>(m_book->List().States().size()); });
    }
    HRESULT STDMETHODCALLTYPE get_StateName(LONG position, BSTR* name) override {
        return Guard().Answer(name, [&] { return NewText(At(position).name); });
    }
    HRESULT STDMETHODCALLTYPE get_CaptureDate(LONG position, DATE* date) override {
        return Guard().Answer(date, [&] { return At(position).captured.days; });
    }
    HRESULT STDMETHODCALLTYPE get_Model(LONG position, BSTR* model) override {
        return Guard().Answer(model, [&] { return NewText(At(position).model); });
    }
    HRESULT STDMETHODCALLTYPE get_Version(LONG position, BSTR* version) override {
        return Guard().Answer(version, [&] { return NewText(At(position).version); });
    }
    HRESULT STDMETHODCALLTYPE Capture(BSTR name) override {
        return Guard().Run([&] { m_book->Capture(windows::TextOf(name)); });
    }
    HRESULT STDMETHODCALLTYPE Restore(LONG position) override {
        return Guard().Run([&] { m_book->Restore(IndexOf(position)); });
    }
    HRESULT STDMETHODCALLTYPE Rename(LONG position, BSTR name) override {
        return Guard().Run([&] { m_book->Rename(IndexOf(position), windows::TextOf(name)); });
    }
    HRESULT STDMETHODCALLTYPE Delete(LONG position) override {
        return Guard().Run([&] { m_book->Delete(IndexOf(position)); });
    }

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override {
        return Guard().Answer(id, [] { return __uuidof(StateInfo); });
    }
    HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override {
        return bag == nullptr ? E_POINTER : Guard().Run([&] {
            windows::ForeignPropertyBag entries(*bag, log);
            m_book->Read(entries);
        });
    }
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL, BOOL) override {
        return bag == nullptr ? E_POINTER : Guard().Run([&] {
            windows::ForeignPropertyBag entries(*bag);
            m_book->List().Write(entries);
        });
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == IID_IPersistPropertyBag ? S_OK : SuiteObject::InterfaceSupportsErrorInfo(id);
    }

    std::shared_ptr<StateBook> Book() noexcept override { return m_book; }

 protected:
    void* FindInterface(REFIID id) noexcept override {
        return id == IID_IPersist ? static_cast<IPersist*>(this) : SuiteObject::FindInterface(id);
    }

 private:
    static std::size_t IndexOf(LONG position) {
        if (position < 1) {
            throw Error(ErrorNumber::SubscriptOutOfRange);
        }
        return static_cast<std::size_t>(position) - 1;
    }
    [[nodiscard]] const NamedState& At(LONG position) const {
        return m_book->List().At(IndexOf(position));
    }

    const std::shared_ptr<StateBook> m_book = std::make_shared<StateBook>(LocalTime);
    std::shared_ptr<AutomationSource> m_source;
};

}  // namespace

IUnknown* NewStateInfo() {
    return NewObject<StateInfoObject>();
}

std::shared_ptr<StateBook> BookOf(IUnknown* info) {
    const auto access = windows::Query<IStateBookAccess>(info);
    return access ? access->Book() : nullptr;
}

}  // namespace krv::suite
