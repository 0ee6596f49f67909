// A name look-up can't be interrupted: its thread may outlive every object of the library, and the
// host's last word to it.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TemporaryFolder.h"
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

// Lets the module call AnswerLate wherever it imports the system's look-up; false if it doesn't.
bool ReplaceLookUp(HMODULE module) {
    const auto lookUp = reinterpret_cast<ULONG_PTR>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ws2_32.dll"), "getaddrinfo")));
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto& headers = *reinterpret_cast<IMAGE_NT_HEADERS*>(
        base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto& imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* from = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         from->Name != 0; ++from) {
        for (auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + from->FirstThunk);
             slot->u1.Function != 0; ++slot) {
            DWORD protection = 0;
            if (slot->u1.Function == lookUp &&
                VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection) != FALSE) {
                slot->u1.Function =
                    reinterpret_cast<ULONG_PTR>(reinterpret_cast<void*>(&AnswerLate));
                return true;
            }
        }
    }
    return false;
}

TEST(NameLookUp, KeepsItsLibraryLoadedAndLeavesWithIt) {
    const TemporaryFolder folder;
    const auto file = folder.Path() / L"KRVSuite.dll";
    std::filesystem::copy_file(TestedLibrary::Suite().Path(), file);
    OleInitialize(nullptr);
    answered = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const TestedLibrary library(file);
    const auto module = [&] { return GetModuleHandleW(file.c_str()); };
    ASSERT_TRUE(ReplaceLookUp(module()));
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
