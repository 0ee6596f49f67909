#include "cli/Report.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "cli/JsonOutput.h"
#include "common/Hexadecimal.h"
#include "common/WholeFile.h"

namespace krv::cli {

using Json = OutputJson;

namespace {

std::string ChecksumText(std::uint32_t crc32) {
    return Hexadecimal(crc32, 8, HexLetters::Small);
}

template <class T>
Json OrNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json CountOf(const std::optional<CodesSummary>& codes) {
    return codes ? Json(codes->count) : Json(nullptr);
}

Json ChecksumOf(const std::optional<CodesSummary>& codes) {
    return codes ? Json(ChecksumText(codes->crc32)) : Json(nullptr);
}

const char* IconName(ports::MessageIcon icon) {
    static constexpr std::array<const char*, 3> Names{"none", "critical", "exclamation"};
    return Names.at(static_cast<std::size_t>(icon));
}

const char* AnswerName(ports::MessageAnswer answer) {
    static constexpr std::array<const char*, 5> Names{"OK", "Cancel", "Yes", "No", "Retry"};
    return Names.at(static_cast<std::size_t>(answer));
}

Json Messages(const Report& report) {
    Json messages = Json::array();
    for (const auto& [message, answer] : report.messages) {
        messages.push_back({{"title", message.title},
                            {"text", message.text},
                            {"icon", IconName(message.icon)},
                            {"answer", AnswerName(answer)}});
    }
    return messages;
}

Json InstrumentErrors(const Report& report) {
    Json errors = Json::array();
    for (const auto& error : report.instrumentErrors) {
        errors.push_back({{"number", error.number}, {"message", error.message}});
    }
    return errors;
}

Json Sent(const Report& report) {
    Json sent = Json::array();
    for (const SentArray& array : report.sent) {
        sent.push_back({{"channel", array.channel},
                        {"name", array.name},
                        {"count", array.count},
                        {"crc32", ChecksumText(array.crc32)}});
    }
    return sent;
}

Json Codes(const Report& report) {
    if (!report.i) {
        return nullptr;
    }
    return {{"minimum", report.smallestCode}, {"maximum", report.largestCode}};
}

}  // namespace

bool MayBecomeReport(const std::string& file) {
    std::error_code ignored;
    if (const auto kind = std::filesystem::symlink_status(PathOf(file), ignored).type();
        kind != std::filesystem::file_type::regular) {
        return kind == std::filesystem::file_type::not_found;
    }
    constexpr std::string_view Start = "{\n  \"command\": \"";
    std::string beginning(Start.size(), '\0');
    std::ifstream(PathOf(file), std::ios::binary)
        .read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
    return beginning == Start;
}

std::string ReportJson(const Report& report) {
    const Json json{
        {"command", report.command},
        {"outcome", report.outcome},
        {"error", report.error.empty() ? Json(nullptr) : Json(report.error)},
        {"model", report.model.empty() ? Json(nullptr) : Json(report.model)},
        {"sources",
         {{"i", report.iFile},
          {"q", OrNull(report.qFile)},
          {"markers", OrNull(report.markerFile)}}},
        {"import", report.import ? ImportJson(*report.import) : Json(nullptr)},
        {"counts",
         {{"i", CountOf(report.i)},
          {"q", CountOf(report.q)},
          {"markers", CountOf(report.markers)}}},
        {"codes", Codes(report)},
        {"crc32",
         {{"i", ChecksumOf(report.i)},
          {"q", ChecksumOf(report.q)},
          {"markers", ChecksumOf(report.markers)}}},
        {"destination", report.destination.empty() ? Json(nullptr) : Json(report.destination)},
        {"transferred", report.transferred},
        {"verified", OrNull(report.verified)},
        {"playing", report.isPlaying},
        {"sent", Sent(report)},
        {"estimatedSeconds", OrNull(report.estimatedSeconds)},
        {"timesMs",
         {{"total", report.totalMs},
          {"read", OrNull(report.readMs)},
          {"convert", OrNull(report.convertMs)},
          {"transfer", OrNull(report.transferMs)}}},
        {"messages", Messages(report)},
        {"instrumentErrors", InstrumentErrors(report)},
    };
    return AsText(json);
}

}  // namespace krv::cli
