// The automation objects of documents: what workbooks and text documents have alike, and the
// collection of the open ones.
#pragma once

#include <memory>
#include <string>

#include "bench/shared/windows/AutomationObject.h"

namespace krv::bench {

[[nodiscard]] _variant_t NewDocuments(const std::shared_ptr<OfficeAutomation>& automation);

// The file's path from the root, as the system writes it.
[[nodiscard]] std::string FullPath(const std::string& path);

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The members that each document has. They throw Error 424 once it is closed.
template <class Own>
class DocumentMembers : public AutomationObject<Own> {
 public:
    DocumentMembers(const std::shared_ptr<OfficeAutomation>& automation,
                    const std::shared_ptr<OfficeDocument>& document)
        : AutomationObject<Own>(automation), m_document(document) {}

 protected:
    static constexpr std::array<Member<Own>, 8> Rows() {
        return {{{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
                 {L"FullName", &Own::GetFullName},
                 {L"Application", &Own::GetApplication},
                 {L"Parent", &Own::GetApplication},
                 {L"Activate", &Own::Activate},
                 {L"Save", &Own::Save},
                 {L"SaveAs", &Own::SaveAs, MemberKind::TakesArguments},
                 {L"Close", &Own::Close, MemberKind::TakesArguments}}};
    }

    [[nodiscard]] std::shared_ptr<OfficeDocument> Document() const {
        return this->Automation()->RequireOpen(m_document);
    }

    _variant_t GetName(const MemberCall&) { return AsVariant(Document()->Name()); }
    _variant_t GetFullName(const MemberCall&) { return AsVariant(Document()->FullName()); }
    _variant_t Activate(const MemberCall&) {
        this->Application().Activate(Document());
        return {};
    }
    _variant_t Save(const MemberCall&) {
        Write(Document()->FullName());
        return {};
    }
    _variant_t SaveAs(const MemberCall& call) {
        Write(FullPath(call.Text(0)));
        return {};
    }
    // Never asks: without SaveChanges nothing is saved.
    _variant_t Close(const MemberCall& call) {
        const auto document = Document();
        if (call.Flag(0, false)) {
            Write(document->FullName());
        }
        this->Application().Close(document);
        return {};
    }

 private:
    void Write(const std::string& path) {
        const auto document = Document();
        try {
            if (path == document->Name()) {
                throw Error(ErrorNumber::PathFileAccess,
                            "The " + std::string(this->Traits().kindOfFile) + " has no file yet.");
            }
            this->Application().SaveAs(*document, path);
        } catch (const Error& error) {
            throw this->Traits().fileError(error);
        }
    }

    std::weak_ptr<OfficeDocument> m_document;
};

#pragma GCC diagnostic pop

}  // namespace krv::bench
