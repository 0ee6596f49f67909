// The toolbar control in the bench's applications, which answer as Word and as Excel do.
#include <gtest/gtest.h>

#include <functional>

#include "bench/book/windows/ApplicationObject.h"
#include "bench/document/windows/DocumentApplicationObject.h"
#include "bench/document/windows/PictureWindow.h"
#include "tests/windows/AutomationTest.h"
#include "tests/windows/ConnectDialogUser.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/HostedControl.h"
#include "tests/windows/TestedLibrary.h"
#include "windows/automation/LateBound.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using windows::LateBound;

class NoWindow final : public ProgramWindow {
 public:
    [[nodiscard]] HWND Handle() const override { return GetDesktopWindow(); }
    [[nodiscard]] bool IsShown() const override { return false; }
    void Show(bool) override {}
    [[nodiscard]] bool IsEditing() const override { return false; }
    void Quit() override {}
};

// krvdoc without its window, with one document.
class DocumentHost final : private DocumentObserver {
 public:
    DocumentHost()
        : m_automation(std::make_shared<DocumentAutomation>(Model, m_window)),
          m_object(windows::MakeCom<DocumentApplicationObject>(m_automation)) {
        m_automation->SetApplicationObject(Object());
        Model.AddIns().push_back({"Krv.dot", "C:\\Nowhere", false});
        Model.Add();
        Model.AddObserver(*this);
    }
    DocumentHost(const DocumentHost&) = delete;
    DocumentHost& operator=(const DocumentHost&) = delete;
    ~DocumentHost() override {
        Model.RemoveObserver(*this);
        m_automation->End();
    }
    [[nodiscard]] IDispatch* Object() const { return m_object.Get(); }
    // "on", "off" or "hidden", with the tool tip.
    [[nodiscard]] std::string Button(const char* caption) {
        const CommandBarModel& bar = Model.GeneratorBar();
        const CommandBarButton& button = bar.At(bar.PositionOf(caption));
        return (!button.isVisible  ? "hidden "
                : button.isEnabled ? "on "
                                   : "off ") +
               button.tooltipText;
    }

    ShownPictureMeter Meter;
    DocumentApplication Model{Meter};
    // The cursors that it had, one after another.
    std::string Cursors;

 private:
    void OnChanged(DocumentChange change) override {
        if (change == DocumentChange::Cursor) {
            Cursors += std::to_string(static_cast<int>(Model.Cursor())) + ' ';
        }
    }

    NoWindow m_window;
    std::shared_ptr<DocumentAutomation> m_automation;
    Microsoft::WRL::ComPtr<DocumentApplicationObject> m_object;
};

// The suite's components are registered as long as this lives.
class HostsOfTheControl : public ControlTest {
 protected:
    HostsOfTheControl() { EXPECT_EQ(TestedLibrary::Suite().Register(), S_OK); }
    ~HostsOfTheControl() override {
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0);
        EXPECT_EQ(TestedLibrary::Suite().Unregister(), S_OK);
    }
    static IDispatch* HostOf(const LateBound& control) {
        return control.GetObject(L"ConnectedApplication").Object();
    }
};

TEST_F(HostsOfTheControl, IsWordWhenWordSetsItself) {
    DocumentHost word;
    const LateBound control = NewControl();
    // Its dialogs need a window that they belong to.
    const windows::HostedControl hosted(control.Object());
    control.PutObject(L"ConnectedApplication", word.Object());
    EXPECT_EQ(HostOf(control), word.Object());
    control.Call(L"UpdateConnectedStatus");
    EXPECT_EQ(word.Button("Connect"), "on Connect to TQL/KRV Signal Generator");
    EXPECT_EQ(word.Button("Connected"), "hidden Connect to TQL/KRV Signal Generator");
    EXPECT_EQ(word.Button("PutData"), "off Download Arb Waveform Data");
    EXPECT_TRUE(word.Model.AddIns()[0].isInstalled);

    word.Model.AddIns()[0].isInstalled = false;
    ConnectDialogUser::Connect(control, [&](HWND dialog) {
        SendMessageW(ConnectDialogUser::Find(dialog, L"Edit"), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(L"sim://M7718C"));
        ConnectDialogUser::Click(dialog, L"&Connect");
    });
    EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});
    EXPECT_EQ(word.Button("Connect").substr(0, 6), "hidden");
    EXPECT_EQ(word.Button("Connected"), "on Connected to M7718C Signal Generator at sim://M7718C");
    EXPECT_EQ(word.Button("PutData"), "on Download Arb Waveform Data");
    EXPECT_EQ(word.Button("Settings"), "on Capture/Restore Settings");
    EXPECT_TRUE(word.Model.AddIns()[0].isInstalled) << "after the buttons";
    EXPECT_EQ(word.Cursors, "0 2 ");

    // Without the help's file beside the template there is no help, and nothing is said.
    control.Call(L"DoHelp");
    EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});

    BookApplication books;
    NoWindow window;
    const auto automation = std::make_shared<BookAutomation>(books, window);
    const auto excel = windows::MakeCom<ApplicationObject>(automation);
    control.PutObject(L"ConnectedApplication", static_cast<IDispatch*>(excel.Get()));
    EXPECT_EQ(HostOf(control), word.Object()) << "Word's adapter stays with Word";
    excel->End();
    automation->End();
}

TEST_F(HostsOfTheControl, IsNobodyWhileNoDocumentIsOpenAndWordOnceOneIs) {
    DocumentHost word;
    word.Model.Close();
    const LateBound control = NewControl();
    control.PutObject(L"ConnectedApplication", word.Object());
    EXPECT_EQ(HostOf(control), nullptr);
    word.Model.Add();
    control.PutObject(L"ConnectedApplication", word.Object());
    EXPECT_EQ(HostOf(control), word.Object());
}

TEST_F(HostsOfTheControl, IsExcelWhenExcelSetsItself) {
    BookApplication books;
    books.Add();
    NoWindow window;
    const auto automation = std::make_shared<BookAutomation>(books, window);
    const auto excel = windows::MakeCom<ApplicationObject>(automation);
    IDispatch* const object = excel.Get();
    automation->SetApplicationObject(object);
    {
        const LateBound control = NewControl();
        control.PutObject(L"ConnectedApplication", object);
        EXPECT_EQ(HostOf(control), object);
        DocumentHost word;
        control.PutObject(L"ConnectedApplication", word.Object());
        EXPECT_EQ(HostOf(control), object) << "Excel's adapter keeps its first";
    }
    excel->End();
    automation->End();
}

}  // namespace
}  // namespace krv::tests
