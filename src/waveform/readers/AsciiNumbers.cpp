#include "waveform/readers/AsciiNumbers.h"

#include <bit>

#include "waveform/readers/QuickNumber.h"

namespace krv::waveform {
namespace {

// A mask that isn't 0. The last bit keeps compilers from looking for that case.
unsigned LowestBit(std::uint64_t mask) noexcept {
    return static_cast<unsigned>(std::countr_zero(mask | std::uint64_t{1} << 63U));
}

// The masks of a window's tokens: where each begins, and where the separator behind it stands. A
// token that goes on behind the window has no end.
struct TokenMarks {
    std::uint64_t starts;
    std::uint64_t ends;

    // The window begins with a token or separators, not within a token.
    explicit TokenMarks(std::uint64_t separators) noexcept
        : starts(~separators & (separators << 1U | 1U)),
          ends(separators & ~(separators << 1U | 1U)) {}
    void Next() noexcept {
        starts &= starts - 1;
        ends &= ends - 1;
    }
    // Where a token begins that goes on behind the window; without one, the window's end.
    [[nodiscard]] std::size_t CutToken() const noexcept {
        return starts > ends ? 63 - static_cast<std::size_t>(std::countl_zero(starts))
                             : WindowMasks::Characters;
    }
};

// Converts as long as there is a whole window with a token's end in it. Where the bytes of a word
// are in the other order, the slow way is the only one.
template <class Window>
ConvertedNumbers ConvertWindows(std::string_view text, std::span<double> values,
                                NumberFormat format) noexcept {
    std::size_t count = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    const auto restFrom = [end](const char* place) {
        return std::string_view(place, static_cast<std::size_t>(end - place));
    };
    constexpr std::ptrdiff_t Needed = WindowMasks::Characters + QuickNumber::Overread;
    WindowMasks next = end - at >= Needed ? Window::Of(at) : WindowMasks();
    while (end - at >= Needed) {
        const WindowMasks masks = next;
        TokenMarks marks(masks.separators);
        const std::size_t step = marks.CutToken();
        if (step == 0) {
            break;
        }
        // The next window's masks don't wait for this one's numbers, which saves a tenth.
        if (end - at - static_cast<std::ptrdiff_t>(step) >= Needed) {
            next = Window::Of(at + step);
        }
        for (; marks.ends != 0; marks.Next()) {
            const unsigned start = LowestBit(marks.starts);
            const unsigned length = LowestBit(marks.ends) - start;
            if (count == values.size()) {
                return {count, restFrom(at + start), NumberTextError::None};
            }
            if (!QuickNumber::Convert<typename Window::DigitReader>(
                    at + start, length, ~masks.digits >> start, format.decimalSeparator,
                    values[count])) {
                const ParsedNumber number = ParseNumber({at + start, length}, format);
                if (number.error != NumberTextError::None) {
                    return {count, restFrom(at + start), number.error};
                }
                values[count] = number.value;
            }
            ++count;
        }
        at += step;
    }
    return {count, restFrom(at), NumberTextError::None};
}

// Converts one token; false when there is none with a separator behind it, or no room.
bool ConvertOne(ConvertedNumbers& converted, std::span<double> values,
                NumberFormat format) noexcept {
    converted.rest = SkipSeparators(converted.rest);
    const std::size_t length = TokenLength(converted.rest);
    if (length == converted.rest.size() || converted.count == values.size()) {
        return false;
    }
    const ParsedNumber number = ParseNumber(converted.rest.substr(0, length), format);
    converted.error = number.error;
    if (number.error != NumberTextError::None) {
        return false;
    }
    values[converted.count] = number.value;
    ++converted.count;
    converted.rest.remove_prefix(length);
    return true;
}

}  // namespace

std::size_t TokenLength(std::string_view text) noexcept {
    std::size_t length = 0;
    while (length < text.size() && !IsSeparator(text[length])) {
        ++length;
    }
    return length;
}

std::string_view SkipSeparators(std::string_view text) noexcept {
    std::size_t skipped = 0;
    while (skipped < text.size() && IsSeparator(text[skipped])) {
        ++skipped;
    }
    return text.substr(skipped);
}

template <class Window>
ConvertedNumbers ConvertNumbersBy(std::string_view text, std::span<double> values,
                                  NumberFormat format) noexcept {
    ConvertedNumbers converted{0, text, NumberTextError::None};
    do {
        if constexpr (std::endian::native == std::endian::little) {
            if (text.size() - converted.rest.size() >= QuickNumber::Underread) {
                const ConvertedNumbers part =
                    ConvertWindows<Window>(converted.rest, values.subspan(converted.count), format);
                converted = {converted.count + part.count, part.rest, part.error};
            }
        }
    } while (converted.error == NumberTextError::None && ConvertOne(converted, values, format));
    return converted;
}

template ConvertedNumbers ConvertNumbersBy<ScalarWindow>(std::string_view, std::span<double>,
                                                         NumberFormat) noexcept;
#if KRV_HAS_SSE2
template ConvertedNumbers ConvertNumbersBy<Sse2Window>(std::string_view, std::span<double>,
                                                       NumberFormat) noexcept;
#endif

}  // namespace krv::waveform
