#include "bench/shared/windows/DocumentObjects.h"

#include "bench/shared/windows/CollectionObject.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

class DocumentsObject final : public CollectionMembers<DocumentsObject> {
 public:
    using CollectionMembers::CollectionMembers;

    static std::span<const Member<DocumentsObject>> Members() {
        using Own = DocumentsObject;
        static constexpr auto Table = Joined(
            Rows(), std::array<Member<Own>, 2>{{{L"Open", &Own::Open, MemberKind::TakesArguments},
                                                {L"Add", &Own::Add, MemberKind::TakesArguments}}});
        return Table;
    }

    [[nodiscard]] std::int32_t Count() const {
        return static_cast<std::int32_t>(Application().Documents().size());
    }
    [[nodiscard]] _variant_t ItemFor(const _variant_t& key) const {
        return Give(V_VT(&key) == VT_BSTR ? Application().DocumentNamed(TextIn(key))
                                          : Application().DocumentAt(NumberIn(key)));
    }

 private:
    [[nodiscard]] _variant_t Give(const std::shared_ptr<OfficeDocument>& document) const {
        return AsVariant(Automation()->ObjectOf(document).Get());
    }
    _variant_t Open(const MemberCall& call) {
        const std::string path = FullPath(call.Text(0));
        try {
            return Give(Application().Open(path));
        } catch (const Error& error) {
            throw Traits().fileError(error);
        }
    }
    _variant_t Add(const MemberCall&) { return Give(Application().Add()); }
};

}  // namespace

_variant_t NewDocuments(const std::shared_ptr<OfficeAutomation>& automation) {
    return NewObject<DocumentsObject>(automation);
}

std::string FullPath(const std::string& path) {
    const std::wstring wide = windows::ToWide(path);
    std::wstring full(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full.empty() ? path : windows::ToUtf8(full);
}

}  // namespace krv::bench
