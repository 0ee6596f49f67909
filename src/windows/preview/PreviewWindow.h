// PreviewWindow: the modeless window in which the user looks at a waveform before it is sent. The
// user-interface thread's.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "ports/desktop/FormScreen.h"
#include "preview/WaveformView.h"
#include "suite/picture/Picture.h"
#include "waveform/data/DacCodes.h"
#include "waveform/dialog/WaveformPreview.h"
#include "windows/base/Handles.h"
#include "windows/base/WindowClass.h"

namespace krv::windows {

class PreviewWindow final : public waveform::WaveformPreview, private WindowClass<PreviewWindow> {
 public:
    PreviewWindow() = default;
    PreviewWindow(const PreviewWindow&) = delete;
    PreviewWindow& operator=(const PreviewWindow&) = delete;
    ~PreviewWindow() override { Close(); }

    void Show(const waveform::DacCodes& codes, const std::string& source,
              ports::WindowHandle owner) override;

 private:
    friend WindowClass<PreviewWindow>;

    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);
    void CreateParts(HWND owner);
    void ShowFigures();
    void Close();
    void Relayout();
    void Redraw();
    void Paint();
    void Wheel(WPARAM wide, LPARAM low);
    bool TakesKey(WPARAM key);
    [[nodiscard]] int Pixels(int units) const;
    [[nodiscard]] int FiguresHeight() const;
    [[nodiscard]] preview::PictureSize PictureArea() const;

    // Nothing while there is no window.
    std::optional<preview::WaveformView> m_view;
    std::string m_source;
    Font m_font;
    // Below the picture: the figures, and what each of them is.
    HWND m_figures = nullptr;
    HWND m_labels = nullptr;
    // Turns of the wheel that are no whole step yet.
    int m_wheel = 0;
    // Empty while it has to be drawn.
    suite::picture::Picture m_picture;
};

}  // namespace krv::windows
