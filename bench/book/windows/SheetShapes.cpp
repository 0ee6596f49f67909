#include "bench/book/windows/SheetShapes.h"

#include <array>

#include "bench/book/BookErrors.h"
#include "bench/shared/FileBytes.h"
#include "bench/shared/windows/AutomationObject.h"
#include "bench/shared/windows/CollectionObject.h"
#include "bench/shared/windows/ShownPicture.h"

namespace krv::bench {
namespace {

constexpr std::int32_t ObjectRequired = 424;
// What kind of shape an embedded picture is.
constexpr std::int32_t EmbeddedPicture = 13;

std::shared_ptr<Workbook> RequireOpen(const std::weak_ptr<Workbook>& reference) {
    std::shared_ptr<Workbook> book = reference.lock();
    if (!book) {
        throw Error(ObjectRequired, "The workbook has been closed.");
    }
    return book;
}

PictureSize NaturalSize(const std::string& bytes) {
    const ShownPicture picture(bytes);
    return {picture.Width(), picture.Height()};
}

// A picture, by its name, which it keeps when others go.
class SheetShape final : public AutomationObject<SheetShape> {
 public:
    SheetShape(std::shared_ptr<BookAutomation> automation, std::weak_ptr<Workbook> book,
               std::string name)
        : AutomationObject(std::move(automation)),
          m_book(std::move(book)),
          m_name(std::move(name)) {}

    static std::span<const Member<SheetShape>> Members() {
        using Own = SheetShape;
        constexpr auto ReadWrite = MemberKind::ReadWrite;
        constexpr auto Method = MemberKind::Method;
        constexpr const wchar_t* Scaling = L"Factor,RelativeToOriginalSize,Scale";
        static constexpr std::array<Member<Own>, 10> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, {}, true},
             {L"Type", &Own::GetType},
             {L"Left", &Own::Left, ReadWrite},
             {L"Top", &Own::Top, ReadWrite},
             {L"Width", &Own::Width, ReadWrite},
             {L"Height", &Own::Height, ReadWrite},
             {L"ScaleHeight", &Own::ScaleHeight, Method, Scaling},
             {L"ScaleWidth", &Own::ScaleWidth, Method, Scaling},
             {L"Delete", &Own::Delete, Method},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    friend class OfficeObject<BookAutomation, SheetShape>;
    [[nodiscard]] const DocumentPicture& Picture() const {
        return RequireOpen(m_book)->PictureNamed(m_name);
    }
    void Change(const std::function<void(DocumentPicture&)>& change) {
        RequireOpen(m_book)->ChangePicture(m_name, change);
    }
    _variant_t GetName(const MemberCall&) { return AsVariant(Picture().name); }
    _variant_t GetType(const MemberCall&) { return AsVariant(EmbeddedPicture); }
    _variant_t Left(const MemberCall& call) {
        if (call.IsPut()) {
            const double left = RealIn(call.NewValue());
            Change([&](DocumentPicture& picture) { picture.left = left; });
        }
        return AsVariant(Picture().left.value_or(0));
    }
    _variant_t Top(const MemberCall& call) {
        if (call.IsPut()) {
            const double top = RealIn(call.NewValue());
            Change([&](DocumentPicture& picture) { picture.top = top; });
        }
        return AsVariant(Picture().top.value_or(0));
    }
    _variant_t Width(const MemberCall& call) {
        if (call.IsPut()) {
            const double width = RealIn(call.NewValue());
            Change([&](DocumentPicture& picture) { picture.size.width = width; });
        }
        return AsVariant(Picture().size.width);
    }
    _variant_t Height(const MemberCall& call) {
        if (call.IsPut()) {
            const double height = RealIn(call.NewValue());
            Change([&](DocumentPicture& picture) { picture.size.height = height; });
        }
        return AsVariant(Picture().size.height);
    }
    // Which corner stays where it is doesn't matter to callers of the bench: the upper left one.
    _variant_t ScaleHeight(const MemberCall& call) {
        const double height = ScaledFrom(call).height;
        Change([&](DocumentPicture& picture) { picture.size.height = height; });
        return {};
    }
    _variant_t ScaleWidth(const MemberCall& call) {
        const double width = ScaledFrom(call).width;
        Change([&](DocumentPicture& picture) { picture.size.width = width; });
        return {};
    }
    [[nodiscard]] PictureSize ScaledFrom(const MemberCall& call) const {
        const double factor = RealIn(call.Argument(0));
        const PictureSize from =
            FlagIn(call.Argument(1)) ? NaturalSize(Picture().bytes) : Picture().size;
        return {from.width * factor, from.height * factor};
    }
    _variant_t Delete(const MemberCall&) {
        RequireOpen(m_book)->RemovePicture(m_name);
        return {};
    }

    std::weak_ptr<Workbook> m_book;
    std::string m_name;
};

class SheetShapesObject final : public AutomationObject<SheetShapesObject> {
 public:
    SheetShapesObject(std::shared_ptr<BookAutomation> automation, std::weak_ptr<Workbook> book)
        : AutomationObject(std::move(automation)), m_book(std::move(book)) {}

    static std::span<const Member<SheetShapesObject>> Members() {
        using Own = SheetShapesObject;
        static constexpr std::array<Member<Own>, 5> Table{
            {{L"Item", &Own::Item, MemberKind::ReadOnly, L"Index", true},
             {L"Count", &Own::GetCount},
             {L"Application", &Own::GetApplication},
             {L"AddPicture", &Own::AddPicture, MemberKind::Method,
              L"Filename,LinkToFile,SaveWithDocument,Left,Top,Width,Height"},
             {L"_NewEnum", &Own::Enumerate, MemberKind::ReadOnly, {}, false, DISPID_NEWENUM}}};
        return Table;
    }

 private:
    friend class OfficeObject<BookAutomation, SheetShapesObject>;
    [[nodiscard]] std::int32_t Count() const {
        return static_cast<std::int32_t>(RequireOpen(m_book)->Pictures().size());
    }
    _variant_t GetCount(const MemberCall&) { return AsVariant(Count()); }
    _variant_t Item(const MemberCall& call) { return ItemFor(call.Argument(0)); }
    _variant_t ItemFor(const _variant_t& key) {
        const auto book = RequireOpen(m_book);
        if (V_VT(&key) == VT_BSTR) {
            return ShapeNamed(book->PictureNamed(TextIn(key)).name);
        }
        const std::int32_t position = NumberIn(key);
        if (position < 1 || position > Count()) {
            throw ApplicationError("There is no picture " + std::to_string(position) + '.');
        }
        return ShapeNamed(book->Pictures()[static_cast<std::size_t>(position) - 1].name);
    }
    _variant_t ShapeNamed(const std::string& name) {
        return Give(windows::MakeCom<SheetShape>(Automation(), m_book, name));
    }
    // Pictures are embedded, never linked; a negative width or height stands for the picture's own.
    _variant_t AddPicture(const MemberCall& call) {
        if (call.Flag(1, false) || !call.Flag(2, true)) {
            throw ApplicationError("Linked pictures are not supported.");
        }
        DocumentPicture picture;
        try {
            picture.bytes = ReadFileBytes(call.Text(0));
            picture.size = NaturalSize(picture.bytes);
        } catch (const Error& error) {
            throw ApplicationError(error.Description());
        }
        picture.left = RealIn(call.Argument(3));
        picture.top = RealIn(call.Argument(4));
        const double width = RealIn(call.Argument(5));
        const double height = RealIn(call.Argument(6));
        picture.size.width = width < 0 ? picture.size.width : width;
        picture.size.height = height < 0 ? picture.size.height : height;
        return ShapeNamed(RequireOpen(m_book)->AddPicture(std::move(picture)));
    }
    _variant_t Enumerate(const MemberCall&) {
        return EnumeratorOf(
            {[this] { return Count(); }, [this](const _variant_t& key) { return ItemFor(key); }});
    }

    std::weak_ptr<Workbook> m_book;
};

}  // namespace

_variant_t NewSheetShapes(const std::shared_ptr<BookAutomation>& automation,
                          const std::shared_ptr<Workbook>& book) {
    return _variant_t(
        static_cast<IDispatch*>(windows::MakeCom<SheetShapesObject>(automation, book).Get()));
}

}  // namespace krv::bench
