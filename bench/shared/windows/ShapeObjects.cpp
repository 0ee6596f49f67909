#include "bench/shared/windows/ShapeObjects.h"

#include "bench/shared/FileBytes.h"
#include "bench/shared/windows/CollectionObject.h"
#include "bench/shared/windows/ShownPicture.h"

namespace krv::bench {
namespace {

// What kind of shape a picture is that lies in its document.
constexpr std::int32_t EmbeddedPicture = 13;

PictureSize NaturalSize(const std::string& bytes) {
    const ShownPicture picture(bytes);
    return {picture.Width(), picture.Height()};
}

// Of one length alone follows the other.
PictureSize SizeFor(PictureSize natural, std::optional<double> width,
                    std::optional<double> height) {
    if (width && !height) {
        height = natural.height * *width / natural.width;
    } else if (height && !width) {
        width = natural.width * *height / natural.height;
    }
    return {width.value_or(natural.width), height.value_or(natural.height)};
}

// A picture, by its name, which it keeps when others go.
class ShapeObject final : public AutomationObject<ShapeObject> {
 public:
    ShapeObject(std::shared_ptr<OfficeAutomation> automation,
                std::weak_ptr<OfficeDocument> document, std::string name)
        : AutomationObject(std::move(automation)),
          m_document(std::move(document)),
          m_name(std::move(name)) {}

    static std::span<const Member<ShapeObject>> Members() {
        using Own = ShapeObject;
        constexpr auto ReadWrite = MemberKind::ReadWrite;
        static constexpr std::array<Member<Own>, 10> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
             {L"Type", &Own::GetType},
             {L"Left", &Own::Left, ReadWrite},
             {L"Top", &Own::Top, ReadWrite},
             {L"Width", &Own::Width, ReadWrite},
             {L"Height", &Own::Height, ReadWrite},
             {L"ScaleHeight", &Own::ScaleHeight, MemberKind::TakesArguments},
             {L"ScaleWidth", &Own::ScaleWidth, MemberKind::TakesArguments},
             {L"Delete", &Own::Delete},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    [[nodiscard]] std::shared_ptr<OfficeDocument> Document() const {
        return Automation()->RequireOpen(m_document);
    }
    [[nodiscard]] DocumentPicture Picture() const { return Document()->PictureNamed(m_name); }

    // Length finds one of the picture's lengths.
    template <class Length>
    void SetLength(double points, const Length& length) {
        Document()->ChangePicture(m_name,
                                  [&](DocumentPicture& picture) { length(picture) = points; });
    }
    template <class Length>
    _variant_t Access(const MemberCall& call, const Length& length) {
        if (call.IsPut()) {
            SetLength(RealIn(call.NewValue()), length);
            return {};
        }
        DocumentPicture picture = Picture();
        return AsVariant(std::optional<double>(length(picture)).value_or(0.0));
    }
    // What a length becomes that is scaled from what it is, or from what it was in the file.
    [[nodiscard]] PictureSize ScaledBy(const MemberCall& call) const {
        const double factor = RealIn(call.Argument(0));
        const DocumentPicture picture = Picture();
        const PictureSize from =
            FlagIn(call.Argument(1)) ? NaturalSize(picture.bytes) : picture.size;
        return {from.width * factor, from.height * factor};
    }
    static std::optional<double>& LeftOf(DocumentPicture& picture) { return picture.left; }
    static std::optional<double>& TopOf(DocumentPicture& picture) { return picture.top; }
    static double& WidthOf(DocumentPicture& picture) { return picture.size.width; }
    static double& HeightOf(DocumentPicture& picture) { return picture.size.height; }

    _variant_t GetName(const MemberCall&) { return AsVariant(Picture().name); }
    _variant_t GetType(const MemberCall&) { return AsVariant(EmbeddedPicture); }
    // Without a place of its own it stands at the beginning of where it goes.
    _variant_t Left(const MemberCall& call) { return Access(call, LeftOf); }
    _variant_t Top(const MemberCall& call) { return Access(call, TopOf); }
    _variant_t Width(const MemberCall& call) { return Access(call, WidthOf); }
    _variant_t Height(const MemberCall& call) { return Access(call, HeightOf); }
    // Which corner stays where it is doesn't matter to callers of the bench: the upper left one.
    _variant_t ScaleHeight(const MemberCall& call) {
        SetLength(ScaledBy(call).height, HeightOf);
        return {};
    }
    _variant_t ScaleWidth(const MemberCall& call) {
        SetLength(ScaledBy(call).width, WidthOf);
        return {};
    }
    _variant_t Delete(const MemberCall&) {
        Document()->RemovePicture(m_name);
        return {};
    }

    std::weak_ptr<OfficeDocument> m_document;
    std::string m_name;
};

class ShapesObject final : public CollectionMembers<ShapesObject> {
 public:
    ShapesObject(std::shared_ptr<OfficeAutomation> automation,
                 std::weak_ptr<OfficeDocument> document)
        : CollectionMembers(std::move(automation)), m_document(std::move(document)) {}

    static std::span<const Member<ShapesObject>> Members() {
        static constexpr auto Table = Joined(
            Rows(), std::array<Member<ShapesObject>, 1>{
                        {{L"AddPicture", &ShapesObject::AddPicture, MemberKind::TakesArguments}}});
        return Table;
    }

    [[nodiscard]] std::int32_t Count() const {
        return static_cast<std::int32_t>(Document()->Pictures().size());
    }
    [[nodiscard]] _variant_t ItemFor(const _variant_t& key) const {
        const auto document = Document();
        if (V_VT(&key) == VT_BSTR) {
            return ShapeNamed(document->PictureNamed(TextIn(key)).name);
        }
        const std::int32_t position = NumberIn(key);
        if (position < 1 || position > Count()) {
            throw Traits().noSuchPicture(std::to_string(position));
        }
        return ShapeNamed(document->Pictures()[static_cast<std::size_t>(position) - 1].name);
    }

 private:
    [[nodiscard]] std::shared_ptr<OfficeDocument> Document() const {
        return Automation()->RequireOpen(m_document);
    }
    [[nodiscard]] _variant_t ShapeNamed(const std::string& name) const {
        return NewObject<ShapeObject>(Automation(), m_document, name);
    }
    // On a sheet each length must be given, and a negative width or height stands for the picture's
    // own. On a page none need be, and the anchor changes nothing.
    [[nodiscard]] std::optional<double> Length(const MemberCall& call, std::size_t index) const {
        return Traits().hasSheets ? RealIn(call.Argument(index)) : call.OptionalReal(index);
    }
    [[nodiscard]] std::optional<double> Side(const MemberCall& call, std::size_t index) const {
        const std::optional<double> side = Length(call, index);
        return Traits().hasSheets && *side < 0 ? std::nullopt : side;
    }
    // Pictures are embedded, never linked.
    _variant_t AddPicture(const MemberCall& call) {
        const auto document = Document();
        DocumentPicture picture;
        picture.left = Length(call, 3);
        picture.top = Length(call, 4);
        const std::optional<double> width = Side(call, 5);
        const std::optional<double> height = Side(call, 6);
        try {
            if (call.Flag(1, false) || !call.Flag(2, true)) {
                throw Error(ErrorNumber::ActionNotSupported, "Linked pictures are not supported.");
            }
            picture.bytes = ReadFileBytes(call.Text(0));
            const PictureSize natural = NaturalSize(picture.bytes);
            // A sheet's picture keeps its own length on the side that isn't given.
            picture.size = Traits().hasSheets ? PictureSize{width.value_or(natural.width),
                                                            height.value_or(natural.height)}
                                              : SizeFor(natural, width, height);
        } catch (const Error& error) {
            throw Traits().fileError(error);
        }
        return ShapeNamed(document->AddPicture(std::move(picture)));
    }

    std::weak_ptr<OfficeDocument> m_document;
};

}  // namespace

_variant_t NewShapes(const std::shared_ptr<OfficeAutomation>& automation,
                     const std::shared_ptr<OfficeDocument>& document) {
    return NewObject<ShapesObject>(automation, document);
}

}  // namespace krv::bench
