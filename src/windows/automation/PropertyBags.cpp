#include "windows/automation/PropertyBags.h"

#include <comdef.h>

#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/ComObject.h"
#include "windows/automation/KeptVariant.h"
#include "windows/automation/VariantValue.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

// Conversions that a caller asks for don't depend on who reads the document.
constexpr LCID NeutralLocale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

// What the bags of different containers answer for an entry that they don't have.
bool HasNoEntry(HRESULT result) {
    return result == E_INVALIDARG || result == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) ||
           result == HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
}

ComPtr<IPersistPropertyBag> PersistenceOf(IUnknown* object) {
    ComPtr<IPersistPropertyBag> persistence;
    if (FAILED(object->QueryInterface(IID_IPersistPropertyBag,
                                      reinterpret_cast<void**>(persistence.GetAddressOf())))) {
        throw Error(ErrorNumber::ActionNotSupported);
    }
    return persistence;
}

}  // namespace

std::optional<Value> ForeignPropertyBag::Find(const std::string& name) {
    _variant_t found;
    const HRESULT result = m_bag.Read(ToWide(name).c_str(), &found, m_log);
    if (HasNoEntry(result)) {
        return std::nullopt;
    }
    ThrowIfFailed(result);
    if (V_VT(&found) == VT_EMPTY) {
        return std::nullopt;
    }
    return ToValue(found);
}

void ForeignPropertyBag::Write(const std::string& name, const Value& value) {
    _variant_t variant = ToVariant(value);
    ThrowIfFailed(m_bag.Write(ToWide(name).c_str(), &variant));
}

class LentPropertyBag::BagObject final : public ComObject<IPropertyBag> {
 public:
    explicit BagObject(PropertyBag& bag) : m_bag(&bag) {}
    void End() { m_bag = nullptr; }

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        if (name == nullptr || value == nullptr) {
            return E_POINTER;
        }
        bool isThere = false;
        const HRESULT result = Guarded(IID_IPropertyBag, "PropertyBag", [&] {
            const std::optional<Value> found = Bag().Find(ToUtf8(name));
            isThere = found.has_value();
            if (isThere) {
                Give(GiveBackVariant(*found), *value);
            }
        });
        return FAILED(result) || isThere ? result : E_INVALIDARG;
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override {
        if (name == nullptr || value == nullptr) {
            return E_POINTER;
        }
        return Guarded(IID_IPropertyBag, "PropertyBag",
                       [&] { Bag().Write(ToUtf8(name), KeepVariant(*value)); });
    }

 private:
    PropertyBag& Bag() {
        if (m_bag == nullptr) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
        return *m_bag;
    }
    // As the kind that the caller has put into the target, whose value counts for nothing.
    static void Give(_variant_t found, VARIANT& target) {
        const VARTYPE wanted = V_VT(&target);
        if (wanted != VT_EMPTY && wanted != V_VT(&found)) {
            ThrowIfFailed(
                VariantChangeTypeEx(&found, &found, NeutralLocale, VARIANT_ALPHABOOL, wanted));
        }
        target = found.Detach();
    }

    PropertyBag* m_bag;
};

LentPropertyBag::LentPropertyBag(PropertyBag& bag) : m_object(MakeCom<BagObject>(bag)) {}

LentPropertyBag::~LentPropertyBag() {
    m_object->End();
}

IPropertyBag* LentPropertyBag::Object() const {
    return m_object.Get();
}

void SaveObject(IUnknown* object, PropertyBag& bag) {
    const auto persistence = PersistenceOf(object);
    const LentPropertyBag lent(bag);
    SetErrorInfo(0, nullptr);
    ThrowIfFailed(persistence->Save(lent.Object(), TRUE, TRUE), persistence.Get(),
                  IID_IPersistPropertyBag);
}

void LoadObject(IUnknown* object, PropertyBag& bag) {
    const auto persistence = PersistenceOf(object);
    const LentPropertyBag lent(bag);
    SetErrorInfo(0, nullptr);
    ThrowIfFailed(persistence->Load(lent.Object(), nullptr), persistence.Get(),
                  IID_IPersistPropertyBag);
}

}  // namespace krv::windows
