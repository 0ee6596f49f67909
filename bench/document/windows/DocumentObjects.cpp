#include "bench/document/windows/DocumentObjects.h"

#include <algorithm>
#include <array>

#include "bench/document/DocumentErrors.h"
#include "bench/shared/windows/CollectionObject.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr std::int32_t ObjectRequired = 424;

std::string Replaced(std::string text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

// The whole text of a document. Callers see paragraphs that each end with a carriage return.
class ContentObject final : public DocumentModelObject<ContentObject> {
 public:
    ContentObject(std::shared_ptr<DocumentAutomation> automation, std::weak_ptr<Document> document)
        : DocumentModelObject(std::move(automation)), m_document(std::move(document)) {}

    static std::span<const Member<ContentObject>> Members() {
        using Own = ContentObject;
        static constexpr std::array<Member<Own>, 5> Table{
            {{L"Text", &Own::Text, MemberKind::ReadWrite, {}, true},
             {L"Start", &Own::GetStart},
             {L"End", &Own::GetEnd},
             {L"InsertAfter", &Own::InsertAfter, MemberKind::Method, L"Text"},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    friend class OfficeObject<DocumentAutomation, ContentObject>;
    [[nodiscard]] std::shared_ptr<Document> Target() const {
        return RequireOpen(Application(), m_document);
    }
    _variant_t Text(const MemberCall& call) {
        if (call.IsPut()) {
            Target()->SetText(Replaced(TextIn(call.NewValue()), '\r', '\n'));
            return {};
        }
        return AsVariant(Replaced(Target()->Text(), '\n', '\r') + "\r");
    }
    _variant_t GetStart(const MemberCall&) { return AsVariant(std::int32_t{0}); }
    _variant_t GetEnd(const MemberCall&) {
        return AsVariant(static_cast<std::int32_t>(CharacterCount(Target()->Text()) + 1));
    }
    _variant_t InsertAfter(const MemberCall& call) {
        Target()->SetText(Target()->Text() + Replaced(call.Text(0), '\r', '\n'));
        return {};
    }

    std::weak_ptr<Document> m_document;
};

class DocumentObject final : public DocumentModelObject<DocumentObject> {
 public:
    DocumentObject(std::shared_ptr<DocumentAutomation> automation, std::weak_ptr<Document> document)
        : DocumentModelObject(std::move(automation)), m_document(std::move(document)) {}

    static std::span<const Member<DocumentObject>> Members() {
        using Own = DocumentObject;
        constexpr auto Method = MemberKind::Method;
        static constexpr std::array<Member<Own>, 13> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, {}, true},
             {L"FullName", &Own::GetFullName},
             {L"Path", &Own::GetPath},
             {L"Application", &Own::GetApplication},
             {L"Parent", &Own::GetApplication},
             {L"Shapes", &Own::GetShapes},
             {L"Content", &Own::GetContent},
             {L"Range", &Own::GetContent, Method},
             {L"Saved", &Own::Saved, MemberKind::ReadWrite},
             {L"Activate", &Own::Activate, Method},
             {L"Save", &Own::Save, Method},
             {L"SaveAs", &Own::SaveAs, Method, L"FileName"},
             {L"Close", &Own::Close, Method, L"SaveChanges"}}};
        return Table;
    }

 private:
    friend class OfficeObject<DocumentAutomation, DocumentObject>;
    [[nodiscard]] std::shared_ptr<Document> Target() const {
        return RequireOpen(Application(), m_document);
    }
    _variant_t GetName(const MemberCall&) { return AsVariant(Target()->Name()); }
    _variant_t GetFullName(const MemberCall&) { return AsVariant(Target()->FullName()); }
    _variant_t GetPath(const MemberCall&) {
        const auto document = Target();
        const std::string full = document->HasFile() ? document->FullName() : std::string();
        return AsVariant(full.substr(0, full.size() - std::min(full.size(), LastPart(full))));
    }
    // With the separator before it.
    static std::size_t LastPart(const std::string& path) {
        const std::size_t separator = path.find_last_of("\\/");
        return separator == std::string::npos ? path.size() : path.size() - separator;
    }
    _variant_t GetShapes(const MemberCall&) { return Give(NewShapes(Automation(), Target())); }
    _variant_t GetContent(const MemberCall&) {
        return Give(windows::MakeCom<ContentObject>(Automation(), Target()));
    }
    _variant_t Saved(const MemberCall& call) {
        if (call.IsPut()) {
            Target()->SetModified(!FlagIn(call.NewValue()));
        }
        return AsVariant(!Target()->IsModified());
    }
    _variant_t Activate(const MemberCall&) {
        (void)Target();
        return {};
    }
    _variant_t Save(const MemberCall&) {
        SaveUnder(Target()->FullName());
        return {};
    }
    _variant_t SaveAs(const MemberCall& call) {
        SaveUnder(call.Text(0));
        return {};
    }
    // Never asks: without SaveChanges nothing is saved.
    _variant_t Close(const MemberCall& call) {
        const auto document = Target();
        if (call.Flag(0, false)) {
            SaveUnder(document->FullName());
        }
        Application().Close();
        return {};
    }
    void SaveUnder(const std::string& path) {
        const auto document = Target();
        if (path == document->Name() && !document->HasFile()) {
            throw Error(ErrorNumber::PathFileAccess, "The document has no file yet.");
        }
        Application().Save(*document, path);
    }

    std::weak_ptr<Document> m_document;
};

class DocumentsObject final : public DocumentModelObject<DocumentsObject> {
 public:
    using DocumentModelObject::DocumentModelObject;

    static std::span<const Member<DocumentsObject>> Members() {
        using Own = DocumentsObject;
        constexpr auto Method = MemberKind::Method;
        static constexpr std::array<Member<Own>, 6> Table{
            {{L"Item", &Own::Item, MemberKind::ReadOnly, L"Index", true},
             {L"Count", &Own::GetCount},
             {L"Application", &Own::GetApplication},
             {L"Add", &Own::Add, Method},
             {L"Open", &Own::Open, Method, L"FileName"},
             {L"_NewEnum", &Own::Enumerate, MemberKind::ReadOnly, {}, false, DISPID_NEWENUM}}};
        return Table;
    }

 private:
    friend class OfficeObject<DocumentAutomation, DocumentsObject>;
    [[nodiscard]] std::int32_t Count() const { return Application().OpenDocument() ? 1 : 0; }
    _variant_t GetCount(const MemberCall&) { return AsVariant(Count()); }
    _variant_t Item(const MemberCall& call) { return ItemFor(call.Argument(0)); }
    _variant_t ItemFor(const _variant_t& key) {
        const auto& document = Application().OpenDocument();
        if (!document || (V_VT(&key) == VT_BSTR ? !EqualIgnoringCase(document->Name(), TextIn(key))
                                                : NumberIn(key) != 1)) {
            throw NoSuchMember();
        }
        return Give(Automation()->ActiveDocumentObject());
    }
    _variant_t Add(const MemberCall&) {
        Application().Add();
        return Give(Automation()->ActiveDocumentObject());
    }
    _variant_t Open(const MemberCall& call) {
        Application().Open(call.Text(0));
        return Give(Automation()->ActiveDocumentObject());
    }
    _variant_t Enumerate(const MemberCall&) {
        return EnumeratorOf(
            {[this] { return Count(); }, [this](const _variant_t& key) { return ItemFor(key); }});
    }
};

}  // namespace

std::shared_ptr<Document> RequireOpen(const DocumentApplication& application,
                                      const std::weak_ptr<Document>& document) {
    std::shared_ptr<Document> found = document.lock();
    if (!found || found != application.OpenDocument()) {
        throw Error(ObjectRequired, "The document has been closed.");
    }
    return found;
}

Microsoft::WRL::ComPtr<IDispatch> NewDocumentObject(
    const std::shared_ptr<DocumentAutomation>& automation,
    const std::shared_ptr<Document>& document) {
    return windows::MakeCom<DocumentObject>(automation, document);
}

_variant_t NewDocuments(const std::shared_ptr<DocumentAutomation>& automation) {
    return _variant_t(static_cast<IDispatch*>(windows::MakeCom<DocumentsObject>(automation).Get()));
}

}  // namespace krv::bench
