#include "formats/SigmfMeta.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "common/Text.h"
#include "formats/Fault.h"

namespace krv::formats {
namespace {

using MetaJson = nlohmann::json;

constexpr std::size_t MostSigmfChannels = 64;
constexpr std::size_t MostAnnotations = 100000;
constexpr int DeepestMeta = 64;

// The object's member, or null.
const MetaJson& Member(const MetaJson& object, const char* name) {
    static const MetaJson Null;
    if (!object.is_object()) {
        return Null;
    }
    const auto found = object.find(name);
    return found == object.end() ? Null : *found;
}

std::uint64_t CountIn(const std::string& file, const MetaJson& object, const char* name,
                      std::uint64_t otherwise) {
    const MetaJson& value = Member(object, name);
    if (!value.is_null() && !value.is_number_unsigned()) {
        throw FileFault(file, std::string(name) + " is not a whole number from 0 on.");
    }
    return value.is_null() ? otherwise : value.get<std::uint64_t>();
}

std::string TextIn(const MetaJson& object, const char* name) {
    const MetaJson& value = Member(object, name);
    return value.is_string() ? value.get<std::string>() : std::string();
}

void TakeCaptures(const std::string& file, const MetaJson& captures, SigmfMeta& meta) {
    if (!captures.is_array()) {
        return;
    }
    for (const MetaJson& each : captures) {
        const std::uint64_t start = CountIn(file, each, "core:sample_start", 0);
        const std::uint64_t headerBytes = CountIn(file, each, "core:header_bytes", 0);
        meta.captures.push_back(start - std::min(start, meta.offset));
        if (headerBytes != 0 && (meta.captures.size() > 1 || meta.captures.front() > 0)) {
            throw FileFault(file, "Headers between the captures are not read: save one capture.");
        }
        meta.headerBytes = std::max(meta.headerBytes, headerBytes);
    }
}

void TakeAnnotations(const std::string& file, const MetaJson& annotations, SigmfMeta& meta) {
    if (!annotations.is_array()) {
        return;
    }
    for (const MetaJson& each : annotations) {
        if (meta.annotations.size() < MostAnnotations) {
            meta.annotations.push_back(
                {CountIn(file, each, "core:sample_start", 0),
                 std::max<std::uint64_t>(CountIn(file, each, "core:sample_count", 1), 1)});
        }
    }
}

void TakeGlobal(const std::string& file, const MetaJson& global, SigmfMeta& meta) {
    const std::string datatype = TextIn(global, "core:datatype");
    const auto layout = ParseSampleLayout(datatype);
    if (!layout) {
        throw FileFault(file, "The data type (core:datatype) is " + QuotedExcerpt(datatype) +
                                  ", which is not known.");
    }
    meta.layout = *layout;
    meta.channels = static_cast<std::size_t>(std::min<std::uint64_t>(
        CountIn(file, global, "core:num_channels", 1), MostSigmfChannels + 1));
    if (meta.channels == 0 || meta.channels > MostSigmfChannels) {
        throw FileFault(file, "The number of channels (core:num_channels) can't be read.");
    }
    const MetaJson& rate = Member(global, "core:sample_rate");
    if (rate.is_number() && rate.get<double>() > 0) {
        meta.sampleRate = rate.get<double>();
    } else if (!rate.is_null()) {
        throw FileFault(file, "core:sample_rate is not a number above 0.");
    }
    meta.trailingBytes = CountIn(file, global, "core:trailing_bytes", 0);
    meta.offset = CountIn(file, global, "core:offset", 0);
    meta.dataset = TextIn(global, "core:dataset");
    if (meta.dataset.find_first_of("/\\:") != std::string::npos) {
        throw FileFault(file, "The samples (core:dataset) are in another folder: " +
                                  QuotedExcerpt(meta.dataset) + '.');
    }
}

}  // namespace

SigmfMeta ParseSigmfMeta(const std::string& file, std::string_view text) {
    // Each level takes many times the memory of its character.
    const auto requireFlat = [&file](int depth, MetaJson::parse_event_t, const MetaJson&) {
        if (depth > DeepestMeta) {
            throw FileFault(file, "The description is nested too deep.");
        }
        return true;
    };
    MetaJson json;
    try {
        json = MetaJson::parse(text, requireFlat);
    } catch (const MetaJson::parse_error& error) {
        throw ByteFault(file, error.byte, "The description is no JSON.");
    } catch (const MetaJson::out_of_range&) {
        throw FileFault(file, "The description holds a number that is too large.");
    }
    SigmfMeta meta;
    TakeGlobal(file, Member(json, "global"), meta);
    TakeCaptures(file, Member(json, "captures"), meta);
    TakeAnnotations(file, Member(json, "annotations"), meta);
    return meta;
}

}  // namespace krv::formats
