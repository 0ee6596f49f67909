#include "suite/discovery/ServiceAnswers.h"

#include <algorithm>

namespace krv::suite {
namespace {

DnsName Below(std::string label, const DnsName& name) {
    DnsName longer{std::move(label)};
    longer.insert(longer.end(), name.begin(), name.end());
    return longer;
}

bool IsAbout(const DnsQuestion& question, const DnsRecord& record) {
    return (question.type == record.type || question.type == DnsType::Any) &&
           AreSameNames(question.name, record.name);
}

}  // namespace

std::vector<DnsRecord> ServiceRecords(const ServedInstrument& instrument) {
    const std::string title =
        instrument.maker + ' ' + instrument.model + ' ' + instrument.serialNumber;
    const DnsName computer{instrument.model + '-' + instrument.serialNumber, "local"};
    std::vector<DnsRecord> records;
    for (const ServedInstrument::Service& service : instrument.services) {
        const DnsName type = DnsNameOf(service.type);
        const DnsName name = Below(title, type);
        records.push_back({.name = type, .type = DnsType::Pointer, .target = name});
        records.push_back(
            {.name = name, .type = DnsType::Service, .target = computer, .port = service.port});
        records.push_back(
            {.name = name,
             .type = DnsType::Text,
             .texts = {"txtvers=1", "Manufacturer=" + instrument.maker, "Model=" + instrument.model,
                       "SerialNumber=" + instrument.serialNumber,
                       "FirmwareVersion=" + instrument.firmware}});
    }
    records.push_back({.name = computer, .type = DnsType::Address, .address = instrument.address});
    return records;
}

std::optional<DnsMessage> AnswerTo(const DnsMessage& question,
                                   const std::vector<DnsRecord>& records, bool isFromOtherPort) {
    DnsMessage answer{.isResponse = true};
    for (const DnsRecord& record : records) {
        const bool isAsked = std::ranges::any_of(
            question.questions, [&](const DnsQuestion& each) { return IsAbout(each, record); });
        (isAsked ? answer.answers : answer.additional).push_back(record);
    }
    if (question.isResponse || answer.answers.empty()) {
        return std::nullopt;
    }
    if (isFromOtherPort) {
        answer.id = question.id;
        answer.questions = question.questions;
    }
    return answer;
}

}  // namespace krv::suite
