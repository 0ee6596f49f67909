#include "image/WordPictureTarget.h"

namespace krv::image {
void WordPictureTarget::SetBusyCursor(bool isBusy) {
    m_word->SetBusyCursor(isBusy);
}

void WordPictureTarget::Place(const std::string& file) {
    m_word->ActiveDocument()->AddPicture(file);
}

}  // namespace krv::image
