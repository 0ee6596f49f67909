// The automation objects of collections, which callers count and index.
#pragma once

#include <functional>
#include <memory>

#include "bench/shared/windows/AutomationObject.h"

namespace krv::bench {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The members of each collection. Own has Count() and ItemFor(key), which takes a position from 1
// or whatever else names an item, and throws Error when there is none.
template <class Own>
class CollectionMembers : public AutomationObject<Own> {
 public:
    using AutomationObject<Own>::AutomationObject;

 protected:
    static constexpr std::array<Member<Own>, 3> Rows() {
        return {{{L"Item", &Own::Item, MemberKind::TakesArguments, true},
                 {L"Count", &Own::GetCount},
                 {L"Application", &Own::GetApplication}}};
    }

    _variant_t Item(const MemberCall& call) { return Self().ItemFor(call.Argument(0)); }
    _variant_t GetCount(const MemberCall&) { return AsVariant(Self().Count()); }

 private:
    Own& Self() { return static_cast<Own&>(*this); }
};

#pragma GCC diagnostic pop

// A collection without members of its own.
class CollectionObject final : public CollectionMembers<CollectionObject> {
 public:
    struct Content {
        std::function<std::int32_t()> count;
        std::function<_variant_t(const _variant_t& key)> itemFor;
    };

    CollectionObject(std::shared_ptr<OfficeAutomation> automation, Content content)
        : CollectionMembers(std::move(automation)), m_content(std::move(content)) {}

    static std::span<const Member<CollectionObject>> Members() {
        static constexpr auto Table = Rows();
        return Table;
    }
    [[nodiscard]] std::int32_t Count() const { return m_content.count(); }
    [[nodiscard]] _variant_t ItemFor(const _variant_t& key) const { return m_content.itemFor(key); }

 private:
    Content m_content;
};

}  // namespace krv::bench
