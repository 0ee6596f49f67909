// RibbonBand: the strip of the main window that shows a ribbon: groups of buttons with pictures,
// labels and tips, each a window of its own. It knows no add-in. The user-interface thread's.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "windows/base/Handles.h"
#include "windows/base/WindowClass.h"

namespace krv::bench {

struct BandButton {
    // By which it is found from outside.
    std::string name;
    std::string label;
    std::string tip;
    bool isEnabled = true;
    bool isVisible = true;
    // With premultiplied transparency; null for none. Outlives what is shown.
    HBITMAP picture = nullptr;
    std::function<void()> click;
};

struct BandGroup {
    std::string label;
    std::vector<BandButton> buttons;
};

class RibbonBand : public windows::WindowClass<RibbonBand> {
 public:
    explicit RibbonBand(HWND parent);
    ~RibbonBand();

    // In place of what was there; buttons that stay are the same windows.
    void Show(const std::string& tab, std::vector<BandGroup> groups);
    [[nodiscard]] int Height() const;
    void Move(const RECT& place);

 private:
    friend WindowClass<RibbonBand>;
    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    void MakeButtons();
    void RemoveButtons();
    void ShowButtons();
    void Arrange();
    void Paint();
    void Draw(const DRAWITEMSTRUCT& item) const;
    void DrawPicture(const DRAWITEMSTRUCT& item, const BandButton& button) const;
    void ShowTip(std::size_t index, std::wstring& text) const;
    [[nodiscard]] int WidthOf(const BandButton& button) const;
    [[nodiscard]] std::vector<const BandButton*> Buttons() const;
    [[nodiscard]] int Scaled(int pixels) const;

    windows::Font m_font;
    HWND m_toolTips = nullptr;
    std::string m_tab;
    std::vector<BandGroup> m_groups;
    // As the buttons of the groups, one behind the other.
    std::vector<HWND> m_windows;
};

}  // namespace krv::bench
