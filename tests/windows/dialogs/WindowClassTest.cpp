#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>

#include "windows/base/WindowClass.h"
#include "windows/base/WindowHook.h"

namespace krv::tests {
namespace {

constexpr windows::WindowKind Kind{L"KRVWindowClassTest"};
constexpr UINT Speak = WM_APP + 1;
constexpr UINT Throw = WM_APP + 2;
constexpr UINT End = WM_APP + 3;

class Speaker : public windows::WindowClass<Speaker> {
 public:
    explicit Speaker(std::string& heard, HWND parent = nullptr) : m_heard(heard) {
        Create(Kind,
               {.style = parent != nullptr ? DWORD{WS_CHILD} : DWORD{WS_POPUP}, .parent = parent});
    }

    LRESULT HandleHooked(HWND window, UINT message, WPARAM wide, LPARAM low) {
        if (message == Throw) {
            throw std::bad_alloc();
        }
        m_heard += message == Speak ? "hooked " : "";
        return DefSubclassProc(window, message, wide, low);
    }

    std::unique_ptr<Speaker>* owner = nullptr;

 private:
    friend WindowClass<Speaker>;

    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low) {
        switch (message) {
            case WM_CREATE:
                m_heard += "create ";
                break;
            case WM_DESTROY:
                m_heard += "destroy ";
                break;
            case Speak:
                m_heard += "speak ";
                return 7;
            case Throw:
                throw std::bad_alloc();
            case End:
                owner->reset();
                return 8;
            default:
                break;
        }
        return DefaultMessage(message, wide, low);
    }

    std::string& m_heard;
};

TEST(WindowClass, CarriesMessagesToItsObjectAndKeepsItsExceptions) {
    std::string heard;
    {
        Speaker speaker(heard);
        ASSERT_NE(speaker.Handle(), nullptr);
        EXPECT_EQ(SendMessageW(speaker.Handle(), Speak, 0, 0), 7);
        EXPECT_EQ(SendMessageW(speaker.Handle(), Throw, 0, 0), 0);
        using Hook = windows::WindowHook<&Speaker::HandleHooked>;
        Hook::Attach(speaker.Handle(), speaker);
        EXPECT_EQ(SendMessageW(speaker.Handle(), Speak, 0, 0), 7);
        EXPECT_EQ(SendMessageW(speaker.Handle(), Throw, 0, 0), 0);
        Hook::Detach(speaker.Handle());
        EXPECT_EQ(SendMessageW(speaker.Handle(), Speak, 0, 0), 7);
    }
    EXPECT_EQ(heard, "speak hooked speak speak ") << "no message of a window without its object";
}

TEST(WindowClass, OutlivesItsWindowAndMayEndWithinAMessage) {
    std::string heard;
    auto parent = std::make_unique<Speaker>(heard);
    const Speaker child(heard, parent->Handle());
    parent->owner = &parent;
    const HWND window = parent->Handle();
    EXPECT_EQ(SendMessageW(window, End, 0, 0), 8);
    EXPECT_EQ(IsWindow(window), FALSE);
    EXPECT_EQ(child.Handle(), nullptr) << "a parent takes its children with it";
    EXPECT_EQ(heard, "destroy ") << "the child's";
}

}  // namespace
}  // namespace krv::tests
