// CollectionObject: the automation object of a collection that callers count, index and go through.
#pragma once

#include <functional>
#include <memory>

#include "bench/shared/windows/AutomationObject.h"

namespace krv::bench {

struct CollectionContent {
    std::function<std::int32_t()> count;
    // Takes a position from 1 or whatever else names an item; throws Error when there is none.
    std::function<_variant_t(const _variant_t& key)> item;
};

class CollectionObject final : public OfficeObject<OfficeAutomation, CollectionObject> {
 public:
    CollectionObject(std::shared_ptr<OfficeAutomation> automation, CollectionContent content)
        : OfficeObject(std::move(automation)), m_content(std::move(content)) {}

    static std::span<const Member<CollectionObject>> Members();

 private:
    friend class OfficeObject<OfficeAutomation, CollectionObject>;
    _variant_t GetCount(const MemberCall&) { return AsVariant(m_content.count()); }
    _variant_t Item(const MemberCall& call) { return m_content.item(call.Argument(0)); }
    _variant_t Enumerate(const MemberCall&);

    CollectionContent m_content;
};

// An enumerator over the items that the collection has now.
[[nodiscard]] _variant_t EnumeratorOf(const CollectionContent& content);

}  // namespace krv::bench
