// Enumerator: one of the IEnum... interfaces over the items that there were when it was made.
//
// Traits say what an item is and how it is kept:
//     using Interface = IEnumVARIANT;      the interface
//     using Item = VARIANT;                what callers receive
//     using Kept = _variant_t;             what is kept
//     static HRESULT Copy(const Kept& kept, Item* item);
//     static void Undo(Item* item);        takes a copy back
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <ocidl.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "windows/automation/ComObject.h"

namespace krv::windows {

template <class Traits>
class Enumerator final : public ComObject<typename Traits::Interface> {
    using Kept = typename Traits::Kept;
    using Item = typename Traits::Item;

 public:
    explicit Enumerator(std::vector<Kept> items, std::size_t position = 0)
        : m_items(std::move(items)), m_position(position) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, Item* items, ULONG* fetched) override {
        if (items == nullptr || (fetched == nullptr && count != 1)) {
            return E_POINTER;
        }
        ULONG copied = 0;
        HRESULT result = S_OK;
        while (copied < count && m_position + copied < m_items.size() && SUCCEEDED(result)) {
            result = Traits::Copy(m_items[m_position + copied], &items[copied]);
            copied += SUCCEEDED(result) ? 1U : 0U;
        }
        if (FAILED(result)) {
            std::for_each(items, items + copied, [](Item& item) { Traits::Undo(&item); });
            copied = 0;
        }
        m_position += copied;
        if (fetched != nullptr) {
            *fetched = copied;
        }
        return FAILED(result) ? result : (copied == count ? S_OK : S_FALSE);
    }

    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = m_items.size() - m_position;
        m_position += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE Reset() override {
        m_position = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Clone(typename Traits::Interface** copy) override {
        if (copy == nullptr) {
            return E_POINTER;
        }
        try {
            *copy = MakeCom<Enumerator>(m_items, m_position).Detach();
            return S_OK;
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }

 private:
    const std::vector<Kept> m_items;
    std::size_t m_position;
};

}  // namespace krv::windows
