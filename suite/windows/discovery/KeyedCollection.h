// KeyedCollection: items in the order in which they were added, found by key or by number from 1.
//
// Errors are those that callers know from such collections: 457 a key that is taken, 5 no item of
// the key, 9 no item of the number, 13 a key that is no text.
#pragma once

#include <comdef.h>

#include <string>
#include <vector>

#include "suite/windows/SuiteObject.h"

namespace krv::suite {

class KeyedCollection final : public SuiteObject<ICvnCollection> {
 public:
    KeyedCollection() : SuiteObject(ProgId::IOSettings) {}

    // Some script engines ask for the enumerator as a method, others as a property.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID interfaceId, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) override {
        const auto asked = static_cast<WORD>(flags | DISPATCH_PROPERTYGET);
        return SuiteObject::Invoke(id, interfaceId, locale, id == DISPID_NEWENUM ? asked : flags,
                                   parameters, result, exception, wrongArgument);
    }

    HRESULT STDMETHODCALLTYPE Item(VARIANT key, VARIANT* item) override;
    HRESULT STDMETHODCALLTYPE Add(VARIANT item, VARIANT key) override;
    HRESULT STDMETHODCALLTYPE Remove(VARIANT key) override;
    HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override;
    HRESULT STDMETHODCALLTYPE get__NewEnum(IUnknown** items) override;

    struct Entry {
        _variant_t item;
        // Empty where the item has none.
        std::wstring key;
    };
    [[nodiscard]] const std::vector<Entry>& Items() const { return m_entries; }

 private:
    using Entries = std::vector<Entry>;

    [[nodiscard]] Entries::iterator WithKey(const std::wstring& key);
    // Throws Error when there is no such item.
    [[nodiscard]] Entries::iterator Find(const VARIANT& key);

    Entries m_entries;
};

}  // namespace krv::suite
