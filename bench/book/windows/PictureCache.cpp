#include "bench/book/windows/PictureCache.h"

#include "common/Error.h"

namespace krv::bench {

const ShownPicture* PictureCache::Find(const DocumentPicture& picture) {
    if (m_entries.size() > MostKept) {
        m_entries.clear();
    }
    Entry& entry = m_entries[picture.name];
    if (entry.bytes != picture.bytes) {
        entry.bytes = picture.bytes;
        entry.shown.reset();
        try {
            entry.shown = std::make_unique<ShownPicture>(picture.bytes);
        } catch (const Error&) {
            return nullptr;
        }
    }
    return entry.shown.get();
}

}  // namespace krv::bench
