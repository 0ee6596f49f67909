#include "waveform/dialog/RangeEntry.h"

#include <string>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "waveform/dialog/BoxLooks.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {
namespace {

constexpr const char* SyntaxMessage =
    "Excel reports a syntax error in the Data Range specification.";

// The two refusals, worded for a typed range and for a selection.
struct ShapeMessages {
    const char* severalAreas;
    const char* block;
};
constexpr ShapeMessages TypedRange{"The Data Range may not specify multiple selections.",
                                   "The Data Range must specify a single column or a single row."};
constexpr ShapeMessages Selection{"This function cannot be used on multiple selections.",
                                  "This function must specify a single column or a single row."};

// Null for a single row or column, else what to say.
const char* ShapeFault(ports::Range& range, const ShapeMessages& messages) {
    if (range.AreaCount() > 1) {
        return messages.severalAreas;
    }
    return range.ColumnCount() > 1 && range.RowCount() > 1 ? messages.block : nullptr;
}

}  // namespace

void RangeEntry::Check() {
    m_sheet = {};
    const std::string text(TrimBlanks(m_range.Text.Get()));
    if (text.empty()) {
        ShowCount(m_count, {}, {});
        return;
    }
    try {
        ShowCount(m_count, std::to_string(CountCells(text)), {});
    } catch (const Error& error) {
        const bool refused = error.Number() == ErrorNumber::RangeRefused;
        ShowCountError(m_count, refused ? error.Description() : SyntaxMessage);
    }
}

void RangeEntry::CheckAgain() {
    if (!m_range.Text.Get().empty()) {
        Check();
    }
}

std::int32_t RangeEntry::CountCells(const std::string& text) {
    if (m_dialog.Excel() == nullptr) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    const auto range = m_dialog.Excel()->ResolveRange(text);
    if (const char* fault = ShapeFault(*range, TypedRange)) {
        throw Error(ErrorNumber::RangeRefused, fault);
    }
    const std::int32_t count = range->CellCount();
    TrapErrors([&] { m_sheet = range->Sheet(); });
    return count;
}

void RangeEntry::CaptureSelection() {
    if (m_dialog.Excel() == nullptr) {
        throw Error(ErrorNumber::ObjectNotSet,
                    "There is no running Excel to take the selection from.");
    }
    const auto selection = m_dialog.Excel()->Selection();
    if (const char* fault = ShapeFault(*selection, Selection)) {
        m_dialog.Tell(fault, ports::MessageIcon::Exclamation);
        return;
    }
    const std::string address = selection->Address();
    const bool isOtherText = address != m_range.Text.Get();
    m_range.Text = address;
    if (!isOtherText) {
        // The same cells, perhaps of another sheet: the box tells of no change.
        Check();
    }
}

}  // namespace krv::waveform
