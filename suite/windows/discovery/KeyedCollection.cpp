#include "suite/windows/discovery/KeyedCollection.h"

#include <algorithm>
#include <cwchar>

#include "common/Error.h"
#include "windows/automation/Enumerator.h"

namespace krv::suite {
namespace {

constexpr std::int32_t NoSuchKey = 5;
constexpr std::int32_t KeyTaken = 457;

struct ItemTraits {
    using Interface = IEnumVARIANT;
    using Item = VARIANT;
    using Kept = _variant_t;
    static HRESULT Copy(const Kept& kept, Item* item) {
        VariantInit(item);
        return VariantCopy(item, const_cast<_variant_t*>(&kept));
    }
    static void Undo(Item* item) { VariantClear(item); }
};

bool IsOmitted(const VARIANT& key) {
    return V_VT(&key) == VT_EMPTY ||
           (V_VT(&key) == VT_ERROR && V_ERROR(&key) == DISP_E_PARAMNOTFOUND);
}

// Callers hand over variables by reference too.
_variant_t DirectValue(const VARIANT& argument) {
    _variant_t value;
    windows::ThrowIfFailed(VariantCopyInd(&value, const_cast<VARIANT*>(&argument)));
    return value;
}

std::wstring KeyText(const _variant_t& key) {
    if (V_VT(&key) != VT_BSTR) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    return V_BSTR(&key) == nullptr ? std::wstring()
                                   : std::wstring(V_BSTR(&key), SysStringLen(V_BSTR(&key)));
}

}  // namespace

HRESULT KeyedCollection::Item(VARIANT key, VARIANT* item) {
    return Guard().Answer(item, [&] { return _variant_t(Find(key)->item).Detach(); });
}

HRESULT KeyedCollection::Add(VARIANT item, VARIANT key) {
    return Guard().Run([&] {
        const _variant_t keyValue = DirectValue(key);
        const std::wstring text = IsOmitted(keyValue) ? std::wstring() : KeyText(keyValue);
        if (!text.empty() && WithKey(text) != m_entries.end()) {
            throw Error(KeyTaken,
                        "This key is already associated with an element of this collection");
        }
        m_entries.push_back({DirectValue(item), text});
    });
}

HRESULT KeyedCollection::Remove(VARIANT key) {
    return Guard().Run([&] { m_entries.erase(Find(key)); });
}

HRESULT KeyedCollection::get_Count(LONG* count) {
    return Guard().Answer(count, [&] { return static_cast<LONG>(m_entries.size()); });
}

HRESULT KeyedCollection::get__NewEnum(IUnknown** items) {
    return Guard().Answer(items, [&]() -> IUnknown* {
        std::vector<_variant_t> copies;
        for (const Entry& entry : m_entries) {
            copies.push_back(entry.item);
        }
        return windows::MakeCom<windows::Enumerator<ItemTraits>>(std::move(copies)).Detach();
    });
}

KeyedCollection::Entries::iterator KeyedCollection::WithKey(const std::wstring& key) {
    return std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return !entry.key.empty() && _wcsicmp(entry.key.c_str(), key.c_str()) == 0;
    });
}

KeyedCollection::Entries::iterator KeyedCollection::Find(const VARIANT& key) {
    _variant_t value = DirectValue(key);
    if (V_VT(&value) == VT_BSTR) {
        const auto found = WithKey(KeyText(value));
        if (found == m_entries.end()) {
            throw Error(NoSuchKey, "Invalid procedure call or argument");
        }
        return found;
    }
    if (FAILED(VariantChangeType(&value, &value, 0, VT_I4))) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    const LONG number = V_I4(&value);
    if (number < 1 || static_cast<std::size_t>(number) > m_entries.size()) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    return m_entries.begin() + (number - 1);
}

}  // namespace krv::suite
