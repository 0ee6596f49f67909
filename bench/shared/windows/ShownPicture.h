// ShownPicture: a picture of a document, ready to be drawn: a placeable Windows metafile, or a
// bitmap in a format that the system reads. The user-interface thread's.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <wrl/client.h>

#include <string>

namespace krv::bench {

class ShownPicture {
 public:
    // Takes the bytes of the picture's file, which may come from anywhere. Throws Error 481 when
    // they are no picture.
    explicit ShownPicture(const std::string& bytes);
    ShownPicture(const ShownPicture&) = delete;
    ShownPicture& operator=(const ShownPicture&) = delete;
    ~ShownPicture();

    // Natural size, in points.
    [[nodiscard]] double Width() const { return m_width; }
    [[nodiscard]] double Height() const { return m_height; }
    // Fills the place, in the context's logical units.
    void Draw(HDC context, const RECT& place) const;

 private:
    bool LoadPlaceable(const std::string& bytes);
    bool LoadBitmap(const std::string& bytes);

    HENHMETAFILE m_metafile = nullptr;
    Microsoft::WRL::ComPtr<IPicture> m_bitmap;
    double m_width = 0;
    double m_height = 0;
};

}  // namespace krv::bench
