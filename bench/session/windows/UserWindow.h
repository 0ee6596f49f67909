// UserWindow: a window of any process as its user meets it: it is looked at, and gets the clicks
// and keys that the user's mouse and keyboard would give it.
//
// Input is posted, never sent, so that the driving process isn't stuck in what a click opens. What
// can't be clicked or typed into is refused with UserError, as it is for a user.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace krv::bench {

// The user can't go on; the text says what was looked for, and what there was.
class UserError : public std::runtime_error {
 public:
    using runtime_error::runtime_error;
};

class UserWindow {
 public:
    explicit UserWindow(HWND handle = nullptr) : m_handle(handle) {}

    [[nodiscard]] HWND Handle() const { return m_handle; }
    [[nodiscard]] bool IsShown() const { return IsWindowVisible(m_handle) != FALSE; }
    // Enabled with everything it lies in.
    [[nodiscard]] bool TakesInput() const;
    // Caption or content. Line breaks are a single \n.
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] std::string ClassName() const;
    // Of a message box; empty for any other window.
    [[nodiscard]] std::string MessageText() const;
    [[nodiscard]] bool IsMessageBox() const;
    [[nodiscard]] bool IsTicked() const;

    // A shown part of this window, at any depth, by its name, its caption (without the mark of its
    // key) or its class. Waits for it.
    UserWindow Part(std::string_view name) const;
    // The same without waiting; its handle is null where there is none at the moment.
    [[nodiscard]] UserWindow PartNow(std::string_view name) const { return UserWindow(Find(name)); }
    [[nodiscard]] bool HasPart(std::string_view name) const { return Find(name) != nullptr; }
    [[nodiscard]] std::vector<UserWindow> Parts() const;

    void Click() const;
    // Replaces the content, character by character. Waits until it has arrived.
    void Type(std::string_view text) const;
    void Tick(bool ticked) const;
    // The key goes to the part that has the keyboard focus. Waits a little until one has it.
    void Press(WPARAM key) const;
    [[nodiscard]] UserWindow Focused() const;
    // An entry of the menu, by the underlined characters of the menu and of the entry.
    void ChooseFromMenu(char menu, char entry) const;
    // The same as dragging its corner to this size, in pixels.
    void Resize(int width, int height) const {
        SetWindowPos(m_handle, nullptr, 0, 0, width, height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // The same as a click on the close button in the title bar.
    void Close() const { PostMessageW(m_handle, WM_CLOSE, 0, 0); }

    // Waits until the content is this, or contains it where the text stands between two *.
    void Expect(std::string_view text) const;
    void ExpectGone() const;

    // What a reader of a failure needs to know of the window: captions and contents of its parts.
    [[nodiscard]] std::string Describe() const;

 private:
    [[nodiscard]] HWND Find(std::string_view name) const;
    void RequireInput() const;

    HWND m_handle;
};

}  // namespace krv::bench
