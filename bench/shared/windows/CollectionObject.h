// CollectionObject: the automation object of a collection, which callers count and index. Positions
// count from 1.
#pragma once

#include <functional>
#include <memory>

#include "bench/shared/windows/AutomationObject.h"
#include "common/Error.h"

namespace krv::bench {

class CollectionObject final : public AutomationObject<CollectionObject> {
 public:
    struct Content {
        std::function<std::int32_t()> count;
        // Takes a position, or whatever else names an item, and throws Error when there is none.
        std::function<_variant_t(const _variant_t& key)> itemFor;
        // Makes a new item; callers can't where there is no such function.
        std::function<_variant_t(const MemberCall& call)> add = {};
    };

    CollectionObject(std::shared_ptr<OfficeAutomation> automation, Content content)
        : AutomationObject(std::move(automation)), m_content(std::move(content)) {}

    static std::span<const Member<CollectionObject>> Members() {
        using Own = CollectionObject;
        static constexpr std::array<Member<Own>, 4> Table{
            {{L"Item", &Own::Item, MemberKind::TakesArguments, true},
             {L"Add", &Own::Add, MemberKind::TakesArguments},
             {L"Count", &Own::GetCount},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t Item(const MemberCall& call) { return m_content.itemFor(call.Argument(0)); }
    _variant_t Add(const MemberCall& call) {
        if (!m_content.add) {
            throw Error(ErrorNumber::ActionNotSupported);
        }
        return m_content.add(call);
    }
    _variant_t GetCount(const MemberCall&) { return AsVariant(m_content.count()); }

    Content m_content;
};

}  // namespace krv::bench
