#include "image/WordPictureHost.h"

namespace krv::image {
void WordPictureHost::SetBusyCursor(bool isBusy) {
    m_word.SetBusyCursor(isBusy);
}

void WordPictureHost::Place(const std::string& file) {
    m_word.ActiveDocument()->AddPicture(file);
}

}  // namespace krv::image
