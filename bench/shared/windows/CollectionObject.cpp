#include "bench/shared/windows/CollectionObject.h"

#include <array>
#include <vector>

#include "windows/automation/Enumerator.h"

namespace krv::bench {
namespace {

struct VariantTraits {
    using Interface = IEnumVARIANT;
    using Item = VARIANT;
    using Kept = _variant_t;
    static HRESULT Copy(const Kept& kept, Item* item) {
        VariantInit(item);
        return VariantCopy(item, const_cast<_variant_t*>(&kept));
    }
    static void Undo(Item* item) { VariantClear(item); }
};

}  // namespace

std::span<const Member<CollectionObject>> CollectionObject::Members() {
    using Own = CollectionObject;
    static constexpr std::array<Member<Own>, 4> Table{
        {{L"Item", &Own::Item, MemberKind::ReadOnly, L"Index", true},
         {L"Count", &Own::GetCount},
         {L"Application", &Own::GetApplication},
         {L"_NewEnum", &Own::Enumerate, MemberKind::ReadOnly, {}, false, DISPID_NEWENUM}}};
    return Table;
}

_variant_t CollectionObject::Enumerate(const MemberCall&) {
    return EnumeratorOf(m_content);
}

_variant_t EnumeratorOf(const CollectionContent& content) {
    std::vector<_variant_t> items;
    for (std::int32_t position = 1; position <= content.count(); ++position) {
        items.push_back(content.item(AsVariant(position)));
    }
    return _variant_t(static_cast<IUnknown*>(
        windows::MakeCom<windows::Enumerator<VariantTraits>>(std::move(items)).Get()));
}

}  // namespace krv::bench
