// WaveformMemory: the named waveforms of the instrument, in a memory of so many points.
//
// A point is an I code with the Q code and the marker code that belong to it. Names are told apart
// without regard to case. A waveform that is replaced makes room for its successor. Every use
// needs the generator's lock, except the end of a reservation.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "simulator/scpi/CodeBlock.h"

namespace krv::simulator {

enum class WaveformFormat : std::uint8_t { Separate, Interleaved };

struct Waveform {
    std::string name;
    WaveformFormat format = WaveformFormat::Separate;
    // The I codes, or I and Q interleaved.
    CodeArray codes;
    // The Q codes; always empty when interleaved.
    CodeArray qCodes;
    CodeArray markers;

    // How many codes of an array make a point: two of interleaved ones, whose markers count the
    // I and the Q codes, too.
    [[nodiscard]] std::uint8_t CodesPerPoint() const noexcept {
        return format == WaveformFormat::Interleaved ? 2 : 1;
    }
    [[nodiscard]] std::uint64_t Points() const noexcept;
    // With copies of the codes. Throws std::bad_alloc.
    [[nodiscard]] Waveform CopyNamed(std::string copyName) const;
};

class WaveformMemory {
 public:
    // Points put aside for data that is coming in; given back when it ends, which any thread may
    // do. The memory outlives it.
    class Reservation {
     public:
        Reservation() = default;
        Reservation(Reservation&& other) noexcept
            : m_reserved(std::exchange(other.m_reserved, nullptr)),
              m_points(std::exchange(other.m_points, 0)) {}
        Reservation& operator=(Reservation&& other) noexcept {
            std::swap(m_reserved, other.m_reserved);
            std::swap(m_points, other.m_points);
            return *this;
        }
        ~Reservation() {
            if (m_reserved != nullptr) {
                m_reserved->fetch_sub(m_points);
            }
        }
        [[nodiscard]] bool IsHeld() const noexcept { return m_points != 0; }

     private:
        friend class WaveformMemory;
        std::atomic<std::uint64_t>* m_reserved = nullptr;
        std::uint64_t m_points = 0;
    };

    explicit WaveformMemory(std::uint64_t points) : m_points(points) {}

    // Lets the reservation hold at least so many points for data of that name. False when they
    // don't fit; the reservation is then as before.
    [[nodiscard]] bool Reserve(Reservation& reservation, std::string_view name,
                               std::uint64_t points);

    // Null when there is none of that name; valid until the memory changes.
    [[nodiscard]] Waveform* Find(std::string_view name);
    // Puts the waveform in the place of the one of its name.
    void Put(Waveform waveform);
    // False when there is none of that name.
    bool Delete(std::string_view name);
    void Clear() noexcept { m_waveforms.clear(); }

    [[nodiscard]] std::uint64_t UsedPoints() const noexcept;
    // What neither a waveform nor a reservation holds.
    [[nodiscard]] std::uint64_t FreePoints() const noexcept;
    [[nodiscard]] const std::map<std::string, Waveform>& Waveforms() const noexcept {
        return m_waveforms;
    }

 private:
    std::uint64_t m_points;
    std::atomic<std::uint64_t> m_reserved{0};
    // By the name in upper case.
    std::map<std::string, Waveform> m_waveforms;
};

}  // namespace krv::simulator
