#include "image/WordPictureHost.h"

namespace krv::image {
namespace {

// Constants of Word's system object.
constexpr std::int32_t WordWaitCursor = 0;
constexpr std::int32_t NormalCursor = 2;

}  // namespace

void WordPictureHost::SetBusyCursor(bool isBusy) {
    m_word.SetCursor(isBusy ? WordWaitCursor : NormalCursor);
}

void WordPictureHost::Place(const std::string& file) {
    m_word.ActiveDocument()->AddPicture(file);
}

}  // namespace krv::image
