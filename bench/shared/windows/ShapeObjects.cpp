#include "bench/shared/windows/ShapeObjects.h"

#include "bench/shared/FileBytes.h"
#include "bench/shared/windows/AutomationObject.h"
#include "bench/shared/windows/ShownPicture.h"

namespace krv::bench {
namespace {

PictureSize NaturalSize(const std::string& bytes) {
    const ShownPicture picture(bytes);
    return {picture.Width(), picture.Height()};
}

// Where one length alone is given, the other keeps the proportions.
PictureSize SizeFor(PictureSize natural, std::optional<double> width,
                    std::optional<double> height) {
    if (width && !height) {
        height = natural.height * *width / natural.width;
    } else if (height && !width) {
        width = natural.width * *height / natural.height;
    }
    return {width.value_or(natural.width), height.value_or(natural.height)};
}

class ShapeObject final : public AutomationObject<ShapeObject> {
 public:
    ShapeObject(std::shared_ptr<OfficeAutomation> automation,
                std::weak_ptr<OfficeDocument> document, std::size_t index)
        : AutomationObject(std::move(automation)),
          m_document(std::move(document)),
          m_index(index) {}

    static std::span<const Member<ShapeObject>> Members() {
        using Own = ShapeObject;
        static constexpr std::array<Member<Own>, 3> Table{
            {{L"ScaleHeight", &Own::ScaleHeight, MemberKind::TakesArguments},
             {L"ScaleWidth", &Own::ScaleWidth, MemberKind::TakesArguments},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    // Scales one side of what the picture is, or of what it was in its file. Which corner stays
    // where it is doesn't matter to callers of the bench: the upper left one.
    void Scale(const MemberCall& call, double PictureSize::*side) {
        const double factor = RealIn(call.Argument(0));
        const auto document = Automation()->RequireOpen(m_document);
        const DocumentPicture& picture = document->Pictures().at(m_index);
        const PictureSize from =
            FlagIn(call.Argument(1)) ? NaturalSize(picture.bytes) : picture.size;
        PictureSize size = picture.size;
        size.*side = from.*side * factor;
        document->ChangePictureSize(m_index, size);
    }
    _variant_t ScaleHeight(const MemberCall& call) {
        Scale(call, &PictureSize::height);
        return {};
    }
    _variant_t ScaleWidth(const MemberCall& call) {
        Scale(call, &PictureSize::width);
        return {};
    }

    std::weak_ptr<OfficeDocument> m_document;
    std::size_t m_index;
};

class ShapesObject final : public AutomationObject<ShapesObject> {
 public:
    ShapesObject(std::shared_ptr<OfficeAutomation> automation,
                 std::weak_ptr<OfficeDocument> document)
        : AutomationObject(std::move(automation)), m_document(std::move(document)) {}

    static std::span<const Member<ShapesObject>> Members() {
        using Own = ShapesObject;
        static constexpr std::array<Member<Own>, 2> Table{
            {{L"AddPicture", &Own::AddPicture, MemberKind::TakesArguments},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
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
        const auto document = Automation()->RequireOpen(m_document);
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
        return NewObject<ShapeObject>(Automation(), m_document,
                                      document->AddPicture(std::move(picture)));
    }

    std::weak_ptr<OfficeDocument> m_document;
};

}  // namespace

_variant_t NewShapes(const std::shared_ptr<OfficeAutomation>& automation,
                     const std::shared_ptr<OfficeDocument>& document) {
    return NewObject<ShapesObject>(automation, document);
}

}  // namespace krv::bench
