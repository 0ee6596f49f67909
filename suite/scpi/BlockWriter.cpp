#include "suite/scpi/BlockWriter.h"

#include <algorithm>

#include "suite/scpi/ByteOrder.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {

std::string BlockWriter::Header(std::size_t codeCount) {
    if (codeCount > MaxCodes) {
        throw ServerError("An array of " + std::to_string(codeCount) +
                          " codes cannot be sent: the instrument takes at most " +
                          std::to_string(MaxCodes) + " in one array.");
    }
    return BlockHeader(codeCount * sizeof(std::int16_t));
}

void BlockWriter::SendCodes(Transport& transport, std::span<const std::int16_t> codes) {
    if (m_piece == nullptr) {
        m_piece = std::make_unique_for_overwrite<Piece>();
    }
    while (!codes.empty()) {
        const auto part = codes.first(std::min(codes.size(), PieceCodes));
        CopyToWireOrder(part, m_piece->codes.data());
        transport.Send(std::as_bytes(std::span(m_piece->codes).first(part.size())),
                       MessagePart::Inner);
        codes = codes.subspan(part.size());
    }
}

}  // namespace krv::suite
