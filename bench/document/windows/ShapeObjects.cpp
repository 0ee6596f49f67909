#include <array>

#include "bench/document/DocumentErrors.h"
#include "bench/document/windows/DocumentObjects.h"
#include "bench/shared/windows/CollectionObject.h"

namespace krv::bench {
namespace {

// What kinds of shapes pictures are.
constexpr std::int32_t LinkedPicture = 11;
constexpr std::int32_t EmbeddedPicture = 13;

// A picture, by its name, which it keeps when others go.
class ShapeObject final : public DocumentModelObject<ShapeObject> {
 public:
    ShapeObject(std::shared_ptr<DocumentAutomation> automation, std::weak_ptr<Document> document,
                std::string name)
        : DocumentModelObject(std::move(automation)),
          m_document(std::move(document)),
          m_name(std::move(name)) {}

    static std::span<const Member<ShapeObject>> Members() {
        using Own = ShapeObject;
        constexpr auto ReadWrite = MemberKind::ReadWrite;
        static constexpr std::array<Member<Own>, 8> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, {}, true},
             {L"Type", &Own::GetType},
             {L"Left", &Own::Left, ReadWrite},
             {L"Top", &Own::Top, ReadWrite},
             {L"Width", &Own::Width, ReadWrite},
             {L"Height", &Own::Height, ReadWrite},
             {L"Delete", &Own::Delete, MemberKind::Method},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    friend class OfficeObject<DocumentAutomation, ShapeObject>;
    [[nodiscard]] std::shared_ptr<Document> Target() const {
        return RequireOpen(Application(), m_document);
    }
    [[nodiscard]] const DocumentPicture& Picture(const Document& document) const {
        return document.Pictures()[document.PictureByName(m_name)];
    }
    template <class Get>
    _variant_t Length(const MemberCall& call, Get get) {
        const auto document = Target();
        if (call.IsPut()) {
            const double length = RealIn(call.NewValue());
            document->ChangePicture(document->PictureByName(m_name),
                                    [&](DocumentPicture& picture) { get(picture) = length; });
            return {};
        }
        DocumentPicture picture = Picture(*document);
        return ValueOf(get(picture));
    }
    static _variant_t ValueOf(double length) { return AsVariant(length); }
    // Without a place of its own it stands at the beginning of where it goes.
    static _variant_t ValueOf(const std::optional<double>& length) {
        return AsVariant(length.value_or(0.0));
    }
    _variant_t GetName(const MemberCall&) { return AsVariant(Picture(*Target()).name); }
    _variant_t GetType(const MemberCall&) {
        return AsVariant(Picture(*Target()).link.empty() ? EmbeddedPicture : LinkedPicture);
    }
    _variant_t Left(const MemberCall& call) {
        return Length(
            call, [](DocumentPicture & picture) -> auto& { return picture.left; });
    }
    _variant_t Top(const MemberCall& call) {
        return Length(
            call, [](DocumentPicture & picture) -> auto& { return picture.top; });
    }
    _variant_t Width(const MemberCall& call) {
        return Length(
            call, [](DocumentPicture & picture) -> auto& { return picture.size.width; });
    }
    _variant_t Height(const MemberCall& call) {
        return Length(
            call, [](DocumentPicture & picture) -> auto& { return picture.size.height; });
    }
    _variant_t Delete(const MemberCall&) {
        const auto document = Target();
        document->RemovePicture(document->PictureByName(m_name));
        return {};
    }

    std::weak_ptr<Document> m_document;
    std::string m_name;
};

class ShapesObject final : public DocumentModelObject<ShapesObject> {
 public:
    ShapesObject(std::shared_ptr<DocumentAutomation> automation, std::weak_ptr<Document> document)
        : DocumentModelObject(std::move(automation)), m_document(std::move(document)) {}

    static std::span<const Member<ShapesObject>> Members() {
        using Own = ShapesObject;
        static constexpr std::array<Member<Own>, 5> Table{
            {{L"Item", &Own::Item, MemberKind::ReadOnly, L"Index", true},
             {L"Count", &Own::GetCount},
             {L"Application", &Own::GetApplication},
             {L"AddPicture", &Own::AddPicture, MemberKind::Method,
              L"FileName,LinkToFile,SaveWithDocument,Left,Top,Width,Height,Anchor"},
             {L"_NewEnum", &Own::Enumerate, MemberKind::ReadOnly, {}, false, DISPID_NEWENUM}}};
        return Table;
    }

 private:
    friend class OfficeObject<DocumentAutomation, ShapesObject>;
    [[nodiscard]] std::shared_ptr<Document> Target() const {
        return RequireOpen(Application(), m_document);
    }
    [[nodiscard]] std::int32_t Count() const {
        return static_cast<std::int32_t>(Target()->Pictures().size());
    }
    _variant_t GetCount(const MemberCall&) { return AsVariant(Count()); }
    _variant_t Item(const MemberCall& call) { return ItemFor(call.Argument(0)); }
    _variant_t ItemFor(const _variant_t& key) {
        const auto document = Target();
        if (V_VT(&key) == VT_BSTR) {
            return ShapeAt(document->PictureByName(TextIn(key)));
        }
        const std::int32_t position = NumberIn(key);
        if (position < 1 || position > Count()) {
            throw NoSuchMember();
        }
        return ShapeAt(static_cast<std::size_t>(position) - 1);
    }
    _variant_t ShapeAt(std::size_t index) {
        return Give(windows::MakeCom<ShapeObject>(Automation(), m_document,
                                                  Target()->Pictures()[index].name));
    }
    // The anchor changes nothing: pictures without a place stand below the text.
    _variant_t AddPicture(const MemberCall& call) {
        PictureToAdd picture{.file = call.Text(0),
                             .isLinked = call.Flag(1, false),
                             .isSavedWithDocument = call.Flag(2, true),
                             .left = call.OptionalReal(3),
                             .top = call.OptionalReal(4),
                             .width = call.OptionalReal(5),
                             .height = call.OptionalReal(6)};
        return ShapeAt(Target()->AddPicture(picture));
    }
    _variant_t Enumerate(const MemberCall&) {
        return EnumeratorOf(
            {[this] { return Count(); }, [this](const _variant_t& key) { return ItemFor(key); }});
    }

    std::weak_ptr<Document> m_document;
};

}  // namespace

Microsoft::WRL::ComPtr<IDispatch> NewShapes(const std::shared_ptr<DocumentAutomation>& automation,
                                            const std::weak_ptr<Document>& document) {
    return windows::MakeCom<ShapesObject>(automation, document);
}

}  // namespace krv::bench
