#include "suite/scpi/ScpiReply.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "common/Text.h"

namespace krv::suite {
namespace {

std::vector<std::string> SplitAtCommas(std::string_view text) {
    std::vector<std::string> fields;
    while (true) {
        const auto comma = text.find(',');
        fields.emplace_back(TrimBlanks(text.substr(0, comma)));
        if (comma == std::string_view::npos) {
            return fields;
        }
        text.remove_prefix(comma + 1);
    }
}

template <class Number>
bool ParseWhole(std::string_view text, int base, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number, base);
    return failure == std::errc() && stop == end;
}

// A waveform's entry in the catalogue, e.g. `Pulse,INT,3`.
std::optional<StoredFile> ParseStoredFile(std::string_view entry) {
    const auto fields = SplitAtCommas(entry);
    StoredFile file;
    if (fields.size() != 3 || !ParseWhole(fields[2], 10, file.points)) {
        return std::nullopt;
    }
    // Blanks belong to a name.
    file.name = entry.substr(0, entry.find(','));
    file.isInterleaved = fields[1] == "INT";
    return file;
}

}  // namespace

std::optional<MemoryContent> ParseCatalog(std::string_view reply) {
    MemoryContent content;
    const std::string_view points = reply.substr(0, reply.find(",\""));
    const auto counts = SplitAtCommas(points);
    if (counts.size() != 2 || !ParseWhole(counts[0], 10, content.usedPoints) ||
        !ParseWhole(counts[1], 10, content.freePoints)) {
        return std::nullopt;
    }
    // Names have neither quotes nor commas.
    for (reply.remove_prefix(points.size()); !reply.empty();) {
        const auto end = reply.find('"', 2);
        auto file = reply.starts_with(",\"") && end != std::string_view::npos
                        ? ParseStoredFile(reply.substr(2, end - 2))
                        : std::nullopt;
        if (!file) {
            return std::nullopt;
        }
        content.files.push_back(std::move(*file));
        reply.remove_prefix(end + 1);
    }
    return content;
}

const StoredFile* FindStored(const MemoryContent& memory, std::string_view name) {
    const auto found = std::ranges::find_if(
        memory.files, [&](const StoredFile& file) { return EqualIgnoringCase(file.name, name); });
    return found == memory.files.end() ? nullptr : &*found;
}

std::optional<Identity> ParseIdentity(std::string_view reply) {
    auto fields = SplitAtCommas(reply);
    if (fields.size() != 4 || fields[1].empty()) {
        return std::nullopt;
    }
    return Identity{std::move(fields[1]), std::move(fields[2]), std::move(fields[3])};
}

std::vector<std::string> ParseOptions(std::string_view reply) {
    std::vector<std::string> options;
    for (std::string& field : SplitAtCommas(reply)) {
        if (!field.empty() && field != "0") {
            options.push_back(std::move(field));
        }
    }
    return options;
}

std::optional<ports::InstrumentError> ParseError(std::string_view reply) {
    ports::InstrumentError error;
    if (reply.starts_with('+')) {
        reply.remove_prefix(1);
    }
    const char* const end = reply.data() + reply.size();
    const auto [stop, failure] = std::from_chars(reply.data(), end, error.number);
    if (failure != std::errc() || stop == end || *stop != ',') {
        return std::nullopt;
    }
    const auto text = ParseQuoted(reply.substr(static_cast<std::size_t>(stop - reply.data()) + 1));
    if (!text) {
        return std::nullopt;
    }
    error.message = *text;
    return error;
}

std::optional<std::string> ParseQuoted(std::string_view reply) {
    reply = TrimBlanks(reply);
    if (reply.size() < 2 || reply.front() != '"' || reply.back() != '"') {
        return std::nullopt;
    }
    reply = reply.substr(1, reply.size() - 2);
    std::string text;
    for (std::size_t index = 0; index < reply.size(); ++index) {
        if (reply[index] == '"') {
            ++index;
            if (index == reply.size() || reply[index] != '"') {
                return std::nullopt;
            }
        }
        text += reply[index];
    }
    return text;
}

std::optional<ports::StoredWaveform> ParseStoredWaveform(std::string_view reply) {
    constexpr std::string_view End = ";1";
    const auto separator = reply.find(';');
    if (separator == std::string_view::npos || !reply.ends_with(End) ||
        reply.size() < separator + 1 + End.size()) {
        return std::nullopt;
    }
    const auto counts = SplitAtCommas(reply.substr(0, separator));
    reply.remove_suffix(End.size());
    const auto sums = SplitAtCommas(reply.substr(separator + 1));
    ports::StoredWaveform stored;
    const std::array arrays{&stored.codes, &stored.qCodes, &stored.markers};
    if (counts.size() != arrays.size() || sums.size() != arrays.size()) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < arrays.size(); ++index) {
        if (!ParseWhole(counts[index], 10, arrays[index]->count) ||
            !sums[index].starts_with("#H") ||
            !ParseWhole(std::string_view(sums[index]).substr(2), 16, arrays[index]->crc32)) {
            return std::nullopt;
        }
    }
    return stored;
}

bool IsInSequence(std::string_view sequence, std::string_view name) {
    return std::ranges::any_of(SplitAtCommas(sequence), [&](std::string_view segment) {
        return EqualIgnoringCase(segment.substr(0, segment.rfind('*')), name);
    });
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        quoted.append(character == '"' ? 2 : 1, character);
    }
    return quoted + '"';
}

}  // namespace krv::suite
