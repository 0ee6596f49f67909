// A name look-up can't be interrupted: its thread may outlive every object of the library, and the
// host's last word to it.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/ReplaceImport.h"
#include "tests/windows/support/SuiteTest.h"

namespace krv::tests {
namespace {

using windows::LateBound;

HANDLE answered = nullptr;

// In place of getaddrinfo.
int WINAPI AnswerLate(const char*, const char*, const void*, void**) {
    constexpr int HostNotFound = 11001;
    WaitForSingleObject(answered, INFINITE);
    return HostNotFound;
}

TEST(NameLookUp, KeepsItsLibraryLoadedAndLeavesWithIt) {
    const TemporaryFolder folder;
    const auto file = folder.Path() / L"KRVSuite.dll";
    std::filesystem::copy_file(TestedLibrary::Suite().Path(), file);
    OleInitialize(nullptr);
    answered = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const TestedLibrary library(file);
    const auto module = [&] { return GetModuleHandleW(file.c_str()); };
    ASSERT_TRUE(ReplaceImport(module(), SystemFunction(L"ws2_32.dll", "getaddrinfo"),
                              reinterpret_cast<void*>(&AnswerLate)));
    {
        const LateBound discovery = library.Create(__uuidof(CvnDiscoveryCtl));
        discovery.Put(L"Address", L"tcp://instrument.invalid:5025");
        const std::string refusal = ErrorOf([&] { discovery.Call(L"Connect"); });
        EXPECT_NE(refusal.find("no answer within"), std::string::npos) << refusal;
    }
    EXPECT_EQ(library.Function<HRESULT(WINAPI*)()>("DllCanUnloadNow")(), S_OK);
    EXPECT_NE(FreeLibrary(module()), FALSE);
    ASSERT_NE(module(), nullptr) << "the look-up still runs in it";
    SetEvent(answered);
    for (int tries = 0; tries < 1000 && module() != nullptr; ++tries) {
        Sleep(5);
    }
    EXPECT_EQ(module(), nullptr);
    CloseHandle(answered);
    OleUninitialize();
}

}  // namespace
}  // namespace krv::tests
