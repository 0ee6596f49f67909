// AnswerBox: the user in front of a message box.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <utility>

namespace krv::tests {

struct ExpectedBox {
    std::wstring title;
    int answer = IDOK;
    std::function<void()> act;
};

inline ExpectedBox expectedBox;

inline void CALLBACK LookForTheBox(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = FindWindowW(L"#32770", expectedBox.title.c_str());
    if (box != nullptr && IsWindowVisible(box) != 0) {
        KillTimer(nullptr, timer);
        expectedBox.act();
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(expectedBox.answer), 0);
    }
}

// Acts while the next message box with this title is up, which is then answered.
inline void AnswerBox(std::wstring title, int answer, std::function<void()> act) {
    expectedBox = {std::move(title), answer, std::move(act)};
    SetTimer(nullptr, 0, 20, LookForTheBox);
}

}  // namespace krv::tests
