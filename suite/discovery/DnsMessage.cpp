#include "suite/discovery/DnsMessage.h"

#include <algorithm>
#include <exception>

namespace krv::suite {
namespace {

constexpr std::size_t MostEntries = 128;
constexpr std::size_t LongestName = 255;
constexpr std::uint16_t ResponseFlag = 0x8000;
constexpr std::uint16_t AuthoritativeFlag = 0x0400;
constexpr std::uint16_t InternetClass = 1;
// In a question: the answer shall be unicast.
constexpr std::uint16_t UnicastFlag = 0x8000;
// In front of a label's length, these bits say that the name goes on elsewhere in the message.
constexpr unsigned JumpBits = 0xC0;

class DamagedMessage final : public std::exception {};

class DnsReader {
 public:
    explicit DnsReader(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    unsigned Byte() {
        if (m_at == m_bytes.size()) {
            throw DamagedMessage();
        }
        return std::to_integer<unsigned>(m_bytes[m_at++]);
    }
    std::uint16_t Number() {
        const unsigned high = Byte();
        return static_cast<std::uint16_t>(high << 8U | Byte());
    }
    std::string Bytes(std::size_t count) {
        if (count > m_bytes.size() - m_at) {
            throw DamagedMessage();
        }
        const auto bytes = m_bytes.subspan(m_at, count);
        m_at += count;
        return {reinterpret_cast<const char*>(bytes.data()), count};
    }
    DnsName Name();
    [[nodiscard]] std::size_t At() const noexcept { return m_at; }
    void GoTo(std::size_t at) {
        if (at > m_bytes.size()) {
            throw DamagedMessage();
        }
        m_at = at;
    }

 private:
    std::span<const std::byte> m_bytes;
    std::size_t m_at = 0;
};

// A jump leads back, before the place that the last one came to, so that jumps have an end.
DnsName DnsReader::Name() {
    DnsName name;
    std::size_t length = 0;
    std::size_t earliest = m_at;
    std::optional<std::size_t> end;
    while (const unsigned size = Byte()) {
        if ((size & JumpBits) == JumpBits) {
            const std::size_t target = (size & ~JumpBits) << 8U | Byte();
            if (target >= earliest) {
                throw DamagedMessage();
            }
            end = end.value_or(m_at);
            earliest = target;
            m_at = target;
            continue;
        }
        length += size + 1;
        if ((size & JumpBits) != 0 || length > LongestName) {
            throw DamagedMessage();
        }
        name.push_back(Bytes(size));
    }
    m_at = end.value_or(m_at);
    return name;
}

DnsQuestion ReadQuestion(DnsReader& reader) {
    DnsQuestion question;
    question.name = reader.Name();
    question.type = DnsType{reader.Number()};
    question.wantsUnicast = (reader.Number() & UnicastFlag) != 0;
    return question;
}

void ReadTexts(DnsReader& reader, std::size_t end, DnsRecord& record) {
    while (reader.At() < end) {
        record.texts.push_back(reader.Bytes(reader.Byte()));
    }
}

// Of a record of a kind that nobody here needs there is no more than its name.
void ReadData(DnsReader& reader, std::size_t end, DnsRecord& record) {
    if (record.type == DnsType::Pointer) {
        record.target = reader.Name();
    } else if (record.type == DnsType::Service) {
        // Priority and weight choose between several that do the same.
        static_cast<void>(reader.Number());
        static_cast<void>(reader.Number());
        record.port = reader.Number();
        record.target = reader.Name();
    } else if (record.type == DnsType::Text) {
        ReadTexts(reader, end, record);
    } else if (record.type == DnsType::Address) {
        for (std::uint8_t& byte : record.address) {
            byte = static_cast<std::uint8_t>(reader.Byte());
        }
    } else {
        reader.GoTo(end);
    }
    if (reader.At() != end) {
        throw DamagedMessage();
    }
}

DnsRecord ReadRecord(DnsReader& reader) {
    DnsRecord record;
    record.name = reader.Name();
    record.type = DnsType{reader.Number()};
    // The class, and how long it is good for.
    for (int each = 0; each < 3; ++each) {
        static_cast<void>(reader.Number());
    }
    const std::size_t length = reader.Number();
    const std::size_t end = reader.At() + length;
    ReadData(reader, end, record);
    return record;
}

bool IsNeeded(DnsType type) {
    return type == DnsType::Pointer || type == DnsType::Service || type == DnsType::Text ||
           type == DnsType::Address;
}

void ReadRecords(DnsReader& reader, std::size_t count, std::vector<DnsRecord>& records) {
    for (std::size_t each = 0; each < count; ++each) {
        DnsRecord record = ReadRecord(reader);
        if (IsNeeded(record.type)) {
            records.push_back(std::move(record));
        }
    }
}

DnsMessage ReadAll(DnsReader& reader) {
    DnsMessage message;
    message.id = reader.Number();
    message.isResponse = (reader.Number() & ResponseFlag) != 0;
    std::array<std::size_t, 4> counts{};
    std::size_t all = 0;
    for (std::size_t& count : counts) {
        count = reader.Number();
        all += count;
    }
    if (all > MostEntries) {
        throw DamagedMessage();
    }
    for (std::size_t each = 0; each < counts[0]; ++each) {
        message.questions.push_back(ReadQuestion(reader));
    }
    ReadRecords(reader, counts[1], message.answers);
    // Those of authorities come between answers and what is added to them.
    ReadRecords(reader, counts[2] + counts[3], message.additional);
    return message;
}

void Write(std::string& bytes, std::size_t number) {
    bytes += static_cast<char>(number >> 8U & 0xFFU);
    bytes += static_cast<char>(number & 0xFFU);
}

void Write(std::string& bytes, const DnsName& name) {
    for (const std::string& label : name) {
        bytes += static_cast<char>(label.size());
        bytes += label;
    }
    bytes += '\0';
}

std::string DataOf(const DnsRecord& record) {
    std::string data;
    if (record.type == DnsType::Service) {
        Write(data, 0);
        Write(data, 0);
        Write(data, record.port);
    }
    if (record.type == DnsType::Service || record.type == DnsType::Pointer) {
        Write(data, record.target);
    } else if (record.type == DnsType::Text) {
        for (const std::string& text : record.texts) {
            data += static_cast<char>(text.size());
            data += text;
        }
    } else {
        data.append(record.address.begin(), record.address.end());
    }
    return data;
}

void Write(std::string& bytes, const DnsRecord& record, std::uint32_t secondsToLive) {
    Write(bytes, record.name);
    Write(bytes, static_cast<std::size_t>(record.type));
    Write(bytes, InternetClass);
    Write(bytes, secondsToLive >> 16U);
    Write(bytes, secondsToLive);
    const std::string data = DataOf(record);
    Write(bytes, data.size());
    bytes += data;
}

char Lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

}  // namespace

DnsName DnsNameOf(std::string_view dotted) {
    DnsName name{""};
    for (const char character : dotted) {
        if (character == '.') {
            name.emplace_back();
        } else {
            name.back() += character;
        }
    }
    return name;
}

bool AreSameNames(const DnsName& one, const DnsName& other) {
    return std::ranges::equal(one, other, [](const std::string& label, const std::string& second) {
        return std::ranges::equal(label, second, {}, Lower, Lower);
    });
}

std::optional<DnsMessage> ReadDnsMessage(std::span<const std::byte> bytes) {
    try {
        DnsReader reader(bytes);
        return ReadAll(reader);
    } catch (const DamagedMessage&) {
        return std::nullopt;
    }
}

std::string DnsMessageBytes(const DnsMessage& message, std::uint32_t secondsToLive) {
    std::string bytes;
    Write(bytes, message.id);
    Write(bytes, message.isResponse ? std::size_t{ResponseFlag | AuthoritativeFlag} : 0);
    Write(bytes, message.questions.size());
    Write(bytes, message.answers.size());
    Write(bytes, 0);
    Write(bytes, message.additional.size());
    for (const DnsQuestion& question : message.questions) {
        Write(bytes, question.name);
        Write(bytes, static_cast<std::size_t>(question.type));
        Write(bytes, std::size_t{InternetClass} | (question.wantsUnicast ? UnicastFlag : 0U));
    }
    for (const auto* records : {&message.answers, &message.additional}) {
        for (const DnsRecord& record : *records) {
            Write(bytes, record, secondsToLive);
        }
    }
    return bytes;
}

}  // namespace krv::suite
