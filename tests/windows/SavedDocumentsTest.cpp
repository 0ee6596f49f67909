// Workbooks and documents that krvbook and krvdoc save and open with their control: connected
// again, or not when they were altered.
#include <fstream>
#include <optional>

#include "bench/session/windows/UserDesktop.h"
#include "bench/shared/DocumentFile.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "common/MemoryPropertyBag.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/BenchProgram.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/RegisteredLibrary.h"
#include "windows/automation/VariantValue.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using windows::LateBound;
using windows::ToVariant;

// One of the bench's programs, as its files and its macros know it.
struct Program {
    std::wstring file;
    std::wstring windowClass;
    const wchar_t* progId;
    CLSID classId;
    std::wstring ending;
    bench::DocumentSection kind;
    bench::DocumentSection content;
    std::int32_t host;
    const wchar_t* activeDocument;
    const wchar_t* documents;
};

const Program Krvbook{L"krvbook.exe",        L"KrvBook",  L"Excel.Application",
                      bench::KrvBookClassId, L".krvbook", {"kind", "workbook"},
                      {"cells", "1,2\r\n"},  1,           L"ActiveWorkbook",
                      L"Workbooks"};
const Program Krvdoc{L"krvdoc.exe",        L"KrvDoc",  L"Word.Application",
                     bench::KrvDocClassId, L".krvdoc", {"kind", "document"},
                     {"text", "Measured"}, 2,          L"ActiveDocument",
                     L"Documents"};

class SavedDocuments : public ControlTest {
 protected:
    explicit SavedDocuments(const Program& program)
        : m_what(program), m_registry(program.progId, program.classId) {}

    [[nodiscard]] std::wstring Path(const wchar_t* name) const {
        return (m_folder.Path() / (name + m_what.ending)).wstring();
    }
    void Write(const wchar_t* name, const std::string& bytes) const {
        std::ofstream(m_folder.Path() / (name + m_what.ending), std::ios::binary) << bytes;
    }
    // A document whose control was connected to the address.
    void WriteDocumentFor(const std::string& address) const {
        MemoryPropertyBag bag;
        bag.Write("DataCWritten", m_what.host);
        bag.Write("IOSettingWritten", true);
        bag.Write("ioAddress", address);
        const auto contents = bag.Contents();
        const bench::DocumentSection sections[] = {
            m_what.kind,
            m_what.content,
            {"control", {reinterpret_cast<const char*>(contents.data()), contents.size()}}};
        Write(L"a", bench::EncodeDocument(sections));
    }
    // Starts the program on the file and attaches to it.
    LateBound Start(const wchar_t* name) {
        m_program.emplace(m_what.file, m_what.windowClass,
                          L"\"" + Path(name) + L"\" --screenshot-ready --register-as-active");
        return Attach();
    }
    LateBound Attach() const {
        EXPECT_NE(m_program->Window(), nullptr);
        Microsoft::WRL::ComPtr<IUnknown> running;
        EXPECT_EQ(GetActiveObject(m_what.classId, nullptr, &running), S_OK);
        return LateBound(running.Get());
    }
    static std::string ConnectedButton(const LateBound& application) {
        const LateBound button =
            application.CallObject(L"CommandBars", {L"TQL/KRV Signal Generator"})
                .CallObject(L"Controls", {L"Connected"});
        return button.GetBool(L"Visible") ? button.GetText(L"TooltipText") : "hidden";
    }
    // Saved by its program and opened again, it is connected both times.
    void ExpectReconnected(const std::string& connected,
                           const std::function<void(const LateBound&)>& change,
                           const std::function<void(const LateBound&)>& expectChange) {
        {
            const LateBound application = Start(L"a");
            EXPECT_EQ(ConnectedButton(application), connected);
            change(application);
            application.GetObject(m_what.activeDocument).Call(L"SaveAs", {Path(L"b").c_str()});
            application.Call(L"Quit");
        }
        EXPECT_EQ(m_program->ExitCode(), 0U);
        {
            const LateBound application = Start(L"b");
            EXPECT_EQ(ConnectedButton(application), connected);
            expectChange(application);
            PostMessageW(m_program->Window(), WM_CLOSE, 0, 0);
        }
        EXPECT_EQ(m_program->ExitCode(), 0U) << "nothing has changed that would be asked about";
        std::string altered = m_folder.Content("b" + windows::ToUtf8(m_what.ending));
        altered.back() = static_cast<char>(altered.back() ^ 1);
        Write(L"c", altered);
    }
    // Another document brings its own control.
    void ExpectConnectedWithAnother(const LateBound& application, const std::string& connected) {
        EXPECT_EQ(ConnectedButton(application), "hidden");
        application.GetObject(m_what.documents).Call(L"Open", {Path(L"b").c_str()});
        EXPECT_EQ(ConnectedButton(application), connected);
        application.Call(L"Quit");
    }

    const Program& m_what;
    ClassForTests m_registry;
    std::optional<BenchProgram> m_program;

 private:
    const RegisteredLibrary m_control{TestedLibrary::Control()};
    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
    TemporaryFolder m_folder;
};

class SavedWorkbook : public SavedDocuments {
 protected:
    SavedWorkbook() : SavedDocuments(Krvbook) {}
    static double CellA1(const LateBound& application) {
        return application.CallObject(L"Range", {L"A1"}).Get(L"Value");
    }
};

class SavedDocument : public SavedDocuments {
 protected:
    SavedDocument() : SavedDocuments(Krvdoc) {}
};

TEST_F(SavedWorkbook, ReconnectsByItselfAndOpensUnconnectedWhenItsControlWasAltered) {
    if (!m_registry.IsMade()) {
        GTEST_SKIP() << "this registry has an Excel.Application, or takes none";
    }
    const RunningGenerator generator;
    const std::string connected = "Connected to M7718C Signal Generator at " + generator.Address();
    WriteDocumentFor(generator.Address());
    ExpectReconnected(
        connected,
        [](const LateBound& application) {
            EXPECT_EQ(CellA1(application), 1);
            application.CallObject(L"Range", {L"A1"}).Put(L"Value", 7.0);
        },
        [](const LateBound& application) { EXPECT_EQ(CellA1(application), 7); });
    {
        const LateBound application = Start(L"c");
        EXPECT_EQ(CellA1(application), 7);
        EXPECT_TRUE(application.GetText(L"StatusBar")
                        .starts_with("The toolbar's settings in \"c.krvbook\" can't be used"));
        ExpectConnectedWithAnother(application, connected);
    }
    EXPECT_EQ(m_program->ExitCode(), 0U);
}

TEST_F(SavedDocument, ReconnectsByItselfAndOpensUnconnectedWhenItsControlWasAltered) {
    if (!m_registry.IsMade()) {
        GTEST_SKIP() << "this registry has a Word.Application, or takes none";
    }
    const RunningGenerator generator;
    const std::string connected = "Connected to M7718C Signal Generator at " + generator.Address();
    WriteDocumentFor(generator.Address());
    const auto text = [](const LateBound& application) {
        return application.GetObject(L"ActiveDocument").GetObject(L"Content").GetText(L"Text");
    };
    ExpectReconnected(
        connected,
        [&](const LateBound& application) {
            EXPECT_EQ(text(application), "Measured\r");
            application.GetObject(L"ActiveDocument")
                .GetObject(L"Content")
                .Call(L"InsertAfter", {L" and kept"});
        },
        [&](const LateBound& application) { EXPECT_EQ(text(application), "Measured and kept\r"); });
    {
        const LateBound application = Start(L"c");
        EXPECT_EQ(text(application), "Measured and kept\r");
        ExpectConnectedWithAnother(application, connected);
    }
    EXPECT_EQ(m_program->ExitCode(), 0U);
}

}  // namespace
}  // namespace krv::tests
