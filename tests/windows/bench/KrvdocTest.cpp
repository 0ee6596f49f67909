// krvdoc as a program: started, driven with messages as by its user, attached to as by an add-in.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <string>

#include "bench/shared/FileBytes.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/BenchProgram.h"
#include "tests/windows/support/PictureFiles.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/VariantValue.h"
#include "windows/base/WideText.h"

namespace krv::tests {
namespace {

using namespace bench;

using windows::LateBound;
using windows::ToVariant;

class RunningKrvdoc final : public BenchProgram {
 public:
    explicit RunningKrvdoc(const std::wstring& arguments)
        : BenchProgram(L"krvdoc.exe", L"KrvDoc", arguments) {}
};

HWND Child(HWND parent, const wchar_t* className) {
    return FindWindowExW(parent, nullptr, className, nullptr);
}

// Holds the text and the pictures.
HWND PageOf(HWND window) {
    return Child(window, L"KrvDocPage");
}

std::wstring TextOf(HWND window) {
    std::wstring text(1024, L'\0');
    text.resize(static_cast<std::size_t>(
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

RECT PlaceIn(HWND parent, HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

class KrvdocTest : public AutomationTest {
 protected:
    TemporaryFolder m_folder;
    const ClassForTests m_registry{L"Word.Application", KrvDocClassId};
};

TEST_F(KrvdocTest, ShowsWhatItsUserTypesAndThePicturesThatCallersAdd) {
    if (!m_registry.IsMade()) {
        GTEST_SKIP() << "this registry has a Word.Application, or takes none";
    }
    WriteFileBytes((m_folder.Path() / "screen.wmf").string(), PlaceableMetafile());
    const RunningKrvdoc program(L"--register-as-active");
    const HWND window = program.Window();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(TextOf(window), L"Document1 - krvdoc");
    const HWND page = PageOf(window);
    const HWND text = Child(page, WC_EDITW);
    for (const wchar_t character : L"One\rTwo") {
        if (character != 0) {
            SendMessageW(text, WM_CHAR, character, 0);
        }
    }
    Microsoft::WRL::ComPtr<IUnknown> running;
    ASSERT_EQ(GetActiveObject(KrvDocClassId, nullptr, &running), S_OK);
    {
        const LateBound application(running.Get());
        application.GetObject(L"ActiveDocument")
            .GetObject(L"Shapes")
            .Call(L"AddPicture", {ToVariant((m_folder.Path() / "screen.wmf").string())});
        const HWND picture = Child(page, L"KrvDocPicture");
        ASSERT_NE(picture, nullptr);
        const int belowText = PlaceIn(page, picture).top;
        EXPECT_GE(belowText, PlaceIn(page, text).bottom);
        // Another line moves the picture, and covers none of it.
        SendMessageW(text, WM_CHAR, L'\r', 0);
        EXPECT_GT(PlaceIn(page, picture).top, belowText);

        application.Put(L"StatusBar", ToVariant(std::string("Connecting...")));
        EXPECT_EQ(TextOf(Child(window, STATUSCLASSNAMEW)), L"Connecting...");
        application.Put(L"DisplayStatusBar", ToVariant(false));
        EXPECT_FALSE(IsWindowVisible(Child(window, STATUSCLASSNAMEW)));
        application.Call(L"Quit");
    }
    running.Reset();
    EXPECT_EQ(program.ExitCode(), 0U);
}

TEST_F(KrvdocTest, EndsWithItsUsage) {
    EXPECT_EQ(RunningKrvdoc(L"--nonsense").ExitCode(), 2U);
}

}  // namespace
}  // namespace krv::tests
