// Vxi11Links: what all VXI-11 connections of a generator have in common: which links there are,
// which of them has the generator locked, and which was told to give up its wait. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>

namespace krv::simulator {

class Vxi11Links {
 public:
    static constexpr std::size_t Most = 32;

    // The new link's number; nothing when there are too many.
    [[nodiscard]] std::optional<std::uint32_t> Open();
    // With its lock.
    void Close(std::uint32_t link);

    // False when another link has the generator locked.
    [[nodiscard]] bool MayUse(std::uint32_t link) const;
    // False when the generator is locked already, by this link or another.
    [[nodiscard]] bool Lock(std::uint32_t link);
    // False when it doesn't have it locked.
    [[nodiscard]] bool Unlock(std::uint32_t link);

    // Tells a link to give up its wait; false when there is none of that number.
    [[nodiscard]] bool Abort(std::uint32_t link);
    // Whether it was told so, once.
    [[nodiscard]] bool TakeAbort(std::uint32_t link);

 private:
    mutable std::mutex m_mutex;
    std::uint32_t m_lastNumber = 0;
    // Whether each was told to give up.
    std::map<std::uint32_t, bool> m_links;
    // 0 for none.
    std::uint32_t m_lockedBy = 0;
};

}  // namespace krv::simulator
