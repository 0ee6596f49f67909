#include "simulator/device/WaveformMemory.h"

#include <algorithm>

#include "simulator/scpi/AsciiCase.h"

namespace krv::simulator {
namespace {

CodeArray CopyOf(const CodeArray& codes) {
    CodeArray copy(codes.Size());
    copy.Resize(codes.Size());
    std::ranges::copy(codes.Span(), copy.Data());
    return copy;
}

}  // namespace

Waveform Waveform::CopyNamed(std::string copyName) const {
    return {std::move(copyName), format, CopyOf(codes), CopyOf(qCodes), CopyOf(markers)};
}

std::uint64_t Waveform::Points() const noexcept {
    const std::uint64_t longest = std::max({codes.Size(), qCodes.Size(), markers.Size()});
    return (longest + CodesPerPoint() - 1) / CodesPerPoint();
}

bool WaveformMemory::Reserve(Reservation& reservation, std::string_view name,
                             std::uint64_t points) {
    const std::uint64_t more = points - std::min(points, reservation.m_points);
    const Waveform* const replaced = Find(name);
    const std::uint64_t room = m_points + (replaced != nullptr ? replaced->Points() : 0);
    const std::uint64_t taken = UsedPoints() + m_reserved.load();
    if (taken > room || more > room - taken) {
        return false;
    }
    m_reserved.fetch_add(more);
    reservation.m_reserved = &m_reserved;
    reservation.m_points += more;
    return true;
}

Waveform* WaveformMemory::Find(std::string_view name) {
    const auto found = m_waveforms.find(AsciiUpper(name));
    return found == m_waveforms.end() ? nullptr : &found->second;
}

void WaveformMemory::Put(Waveform waveform) {
    std::string key = AsciiUpper(waveform.name);
    m_waveforms.insert_or_assign(std::move(key), std::move(waveform));
}

bool WaveformMemory::Delete(std::string_view name) {
    return m_waveforms.erase(AsciiUpper(name)) != 0;
}

std::uint64_t WaveformMemory::UsedPoints() const noexcept {
    std::uint64_t used = 0;
    for (const auto& [key, waveform] : m_waveforms) {
        used += waveform.Points();
    }
    return used;
}

std::uint64_t WaveformMemory::FreePoints() const noexcept {
    const std::uint64_t taken = UsedPoints() + m_reserved.load();
    return m_points - std::min(m_points, taken);
}

}  // namespace krv::simulator
