// The pictures of the toolbar's buttons, drawn at the size they are shown in, so that they stay
// crisp at any resolution.
#pragma once

#include <windows.h>

#include <string>

namespace krv::windows {

// What drawing needs of the system, for as long as it lives. Cheap where there is another already.
class GraphicsSession {
 public:
    GraphicsSession();
    GraphicsSession(const GraphicsSession&) = delete;
    GraphicsSession& operator=(const GraphicsSession&) = delete;
    ~GraphicsSession();

 private:
    ULONG_PTR m_token = 0;
};

// Draws the picture of a button's name into the largest square that is centred in the place; greyed
// where the button is disabled. Other names draw nothing.
void DrawToolbarPicture(HDC context, const RECT& place, const std::string& picture, bool enabled);

}  // namespace krv::windows
