// StateWindow: the instrument-state control's window: the box for a new state's name, the list of
// states with date and instrument, the buttons and a line of status. What the user does goes to the
// panel that it is the picture of.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <array>
#include <string>
#include <vector>

#include "suite/states/StatePanel.h"
#include "suite/windows/panel/PanelWindow.h"

namespace krv::suite {

class StateWindow final : public PanelWindow {
 public:
    // The children's identifiers.
    enum Child : int {
        NameLabel = 101,
        NameBox,
        CaptureButton,
        StatesLabel,
        StateListView,
        RestoreButton,
        RenameButton,
        DeleteButton,
        StatusLabel
    };

    // The panel is the owner's. The owner is kept while the user's action runs: the message boxes
    // of the panel let others in, who may release it.
    StateWindow(suite::StatePanel& panel, IUnknown& owner);
    ~StateWindow() override { Destroy(); }

    // Shows the panel as it is now. Does nothing without a window.
    void Update();
    // What message boxes belong to; null without a window.
    [[nodiscard]] HWND TopLevel() const;

    // A control's extent in pixels at 96 dots per inch.
    static constexpr SIZE NaturalSize{473, 279};

 private:
    using Row = std::array<std::wstring, 3>;

    [[nodiscard]] RECT PlaceOf(int child, SIZE size, int dotsPerInch) const override;
    void Created() override;
    void LaidOut() override;
    void Command(int id, UINT notification) override;
    LRESULT Notify(const NMHDR& notification) override;
    void Posted(UINT message) override;
    [[nodiscard]] int FirstFocus() const override { return NameBox; }
    [[nodiscard]] int EnterButton(int focusedChild) const override;
    bool TakesOtherKey(const MSG& message) override;

    void ShowRows();
    void ShowSelection();
    void Enable(int id, bool enabled);
    void BeginRename();
    void TakeSelection();
    LRESULT EndRename(const NMLVDISPINFOW& edit);

    suite::StatePanel& m_panel;
    IUnknown& m_owner;
    std::vector<Row> m_rows;
    // The name that was entered for the state, while its use is still to come.
    std::string m_renamedTo;
    bool m_updating = false;
};

}  // namespace krv::suite
