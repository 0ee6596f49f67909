// PictureCache: pictures as they were last drawn, so that painting doesn't read them again. The
// user-interface thread's.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "bench/shared/DocumentPicture.h"
#include "bench/shared/windows/ShownPicture.h"

namespace krv::bench {

class PictureCache {
 public:
    // Null for what is no picture. Valid until the next call.
    [[nodiscard]] const ShownPicture* Find(const DocumentPicture& picture);

 private:
    // Few enough that all of a sheet's usual ones fit.
    static constexpr std::size_t MostKept = 64;

    struct Entry {
        std::string bytes;
        std::unique_ptr<ShownPicture> shown;
    };
    // By the picture's name.
    std::map<std::string, Entry> m_entries;
};

}  // namespace krv::bench
