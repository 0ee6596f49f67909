// Faults: what the generator does wrong on purpose. Switched on with "NAME" or "NAME=VALUE":
//
//     delay=MS             each reply waits so many milliseconds
//     bandwidth=BYTES      no more than so many bytes a second are taken in on each connection
//     disconnect=N         the connection ends when N more bytes have come in; once
//     truncate-reply       of each reply only the first half is sent, without terminator
//     never-answer         no reply is sent
//     error=CODE,TEXT      the next waveform or marker data received puts the entry into the error
//                          queue; once
//     memory-full          waveform and marker data are refused with -225 "Out of memory"
//     corrupt-data         in the next waveform or marker data received one bit is turned over;
//     once
//
// A fault stays until it is cleared, except those that happen once. Any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/scpi/ErrorQueue.h"

namespace krv::simulator {

class Faults {
 public:
    // Throws std::invalid_argument for an unknown fault (the text lists the known ones) or a value
    // that the fault doesn't take.
    void Switch(std::string_view fault);
    void Clear();
    // As they would be switched on, in the list's order.
    [[nodiscard]] std::vector<std::string> Active() const;

    struct Intake {
        // How many of the bytes come through before the connection ends.
        std::size_t bytes = 0;
        bool disconnect = false;
        // How long to wait before more is taken in.
        std::chrono::microseconds pause{0};
    };
    // The largest piece to take in at once, at most the capacity.
    [[nodiscard]] std::size_t PieceSize(std::size_t capacity) const;
    // What becomes of bytes that have come in; counts them.
    [[nodiscard]] Intake TakeIn(std::size_t bytes);

    struct Outgoing {
        std::string text;
        std::chrono::milliseconds delay{0};
    };
    // The reply as it is to be sent; nothing when it never is.
    [[nodiscard]] std::optional<Outgoing> Answer(std::string reply) const;

    // Waveform data finds the memory full.
    [[nodiscard]] bool RefusesData() const;
    // The entry for the data received now, once.
    [[nodiscard]] std::optional<QueuedError> TakeInjectedError();
    // Whether the data received now is to be corrupted; true once.
    [[nodiscard]] bool TakeCorruption();

    [[nodiscard]] static std::span<const std::string_view> Names() noexcept;

 private:
    void SwitchByName(std::string_view name, std::string_view value);

    mutable std::mutex m_mutex;
    std::optional<std::uint64_t> m_delayMs;
    std::optional<std::uint64_t> m_bytesPerSecond;
    std::optional<std::uint64_t> m_bytesToDisconnect;
    bool m_truncateReply = false;
    bool m_neverAnswer = false;
    bool m_memoryFull = false;
    bool m_corruptData = false;
    std::optional<QueuedError> m_injected;
};

}  // namespace krv::simulator
