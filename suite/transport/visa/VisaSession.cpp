#include "suite/transport/visa/VisaSession.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace krv::suite {
namespace {

namespace AttributeId = visa::AttributeId;
namespace InterfaceCode = visa::InterfaceCode;

// Ends of messages on a serial line: none, or the termination character.
constexpr visa::AttributeState NoEnd = 0;
constexpr visa::AttributeState TermCharEnd = 2;
// Of flow control.
constexpr visa::AttributeState RtsCts = 2;

constexpr visa::AttributeState LineEnd = 0x0A;

// An instrument that hangs isn't waited for at the end.
constexpr std::chrono::milliseconds ClearTimeOut{1000};

}  // namespace

visa::Status VisaSession::Open(const std::string& name, const std::optional<SerialAddress>& line,
                               std::chrono::milliseconds timeOut) {
    if (const visa::Status status = m_functions.openDefaultRM(&m_manager); status < 0) {
        m_manager = 0;
        return status;
    }
    const visa::Status status =
        m_functions.open(m_manager, name.c_str(), visa::ShareAccess,
                         static_cast<std::uint32_t>(timeOut.count()), &m_session);
    if (status < 0) {
        m_session = 0;
        return status;
    }
    FindOutKind();
    SetUpEnds();
    if (m_kind == Kind::Serial) {
        if (line) {
            SetUpLine(*line);
        }
        ReadLine();
    }
    return status;
}

void VisaSession::FindOutKind() {
    switch (Get(AttributeId::InterfaceType)) {
        case InterfaceCode::Gpib:
            m_kind = Kind::Gpib;
            break;
        case InterfaceCode::Usb:
            m_kind = Kind::Usb;
            break;
        case InterfaceCode::Serial:
            m_kind = Kind::Serial;
            break;
        default: {
            std::array<char, visa::DescriptionSize> text{};
            m_functions.getAttribute(m_session, AttributeId::ResourceClass, text.data());
            m_kind = std::string(text.data()) == "SOCKET" ? Kind::Stream : Kind::Lan;
        }
    }
}

// Where nothing but the bytes themselves tells the end of a message, a transfer ends at each line
// end, so that it doesn't wait for more than there is. Elsewhere a byte 0x0A means nothing.
void VisaSession::SetUpEnds() {
    const bool isStream = m_kind == Kind::Stream || m_kind == Kind::Serial;
    Set(AttributeId::TermChar, LineEnd);
    Set(AttributeId::TermCharEnabled, isStream ? 1 : 0);
    if (m_kind == Kind::Serial) {
        Set(AttributeId::SerialEndIn, TermCharEnd);
        Set(AttributeId::SerialEndOut, NoEnd);
    }
}

void VisaSession::SetUpLine(const SerialAddress& line) {
    const auto stopBits = line.stopBits == StopBits::One          ? 10U
                          : line.stopBits == StopBits::OneAndHalf ? 15U
                                                                  : 20U;
    Set(AttributeId::BaudRate, static_cast<visa::AttributeState>(line.baudRate));
    Set(AttributeId::DataBits, SerialAddress::DataBits);
    Set(AttributeId::StopBits, stopBits);
    Set(AttributeId::Parity, static_cast<visa::AttributeState>(line.parity));
    Set(AttributeId::FlowControl, line.hardwareFlow ? RtsCts : 0);
}

void VisaSession::ReadLine() {
    m_line.baudRate = static_cast<std::int32_t>(std::max(Get(AttributeId::BaudRate), 1U));
    const std::uint32_t stopBits = Get(AttributeId::StopBits);
    m_line.stopBits = stopBits == 15   ? StopBits::OneAndHalf
                      : stopBits == 20 ? StopBits::Two
                                       : StopBits::One;
}

visa::Status VisaSession::Write(std::span<const std::byte> bytes, bool endsMessage,
                                std::chrono::milliseconds timeOut) {
    if (m_assertsEnd != endsMessage) {
        Set(AttributeId::SendEnd, endsMessage ? 1 : 0);
        m_assertsEnd = endsMessage;
    }
    SetTimeOut(timeOut);
    m_count = 0;
    const auto size = static_cast<std::uint32_t>(bytes.size());
    const visa::Status status = m_functions.write(
        m_session, reinterpret_cast<const visa::Byte*>(bytes.data()), size, &m_count);
    m_count = std::min(m_count, size);
    return status;
}

visa::Status VisaSession::Read(std::size_t most, std::chrono::milliseconds timeOut) {
    SetTimeOut(timeOut);
    m_count = 0;
    const auto size = static_cast<std::uint32_t>(std::min(most, m_buffer.size()));
    const visa::Status status =
        m_functions.read(m_session, reinterpret_cast<visa::Byte*>(m_buffer.data()), size, &m_count);
    m_count = std::min(m_count, size);
    return status;
}

visa::Status VisaSession::ReadStatusByte(std::uint8_t& status) {
    visa::Word word = 0;
    const visa::Status outcome = m_functions.readStatusByte(m_session, &word);
    status = static_cast<std::uint8_t>(word);
    return outcome;
}

visa::Status VisaSession::GoToLocal() {
    return m_functions.gpibControlRen(m_session, visa::AddressGoToLocal);
}

void VisaSession::Clear() {
    SetTimeOut(ClearTimeOut);
    m_functions.clear(m_session);
}

void VisaSession::Close() noexcept {
    for (visa::Object* const object : {&m_session, &m_manager}) {
        if (*object != 0) {
            m_functions.close(*object);
            *object = 0;
        }
    }
}

std::string VisaSession::Describe(visa::Status failure) {
    std::array<char, visa::DescriptionSize> text{};
    const visa::Object object = m_session != 0 ? m_session : m_manager;
    if (object != 0 && m_functions.statusDescription(object, failure, text.data()) >= 0) {
        text.back() = '\0';
    }
    return text.data();
}

void VisaSession::Set(visa::Attribute attribute, visa::AttributeState value) {
    // A resource that lacks the attribute needs none.
    m_functions.setAttribute(m_session, attribute, value);
}

void VisaSession::SetTimeOut(std::chrono::milliseconds timeOut) {
    if (m_timeOut != timeOut) {
        Set(AttributeId::TimeOutMs, static_cast<visa::AttributeState>(timeOut.count()));
        m_timeOut = timeOut;
    }
}

std::uint32_t VisaSession::Get(visa::Attribute attribute) {
    // The library writes as many bytes as the attribute has, the lowest first.
    std::array<visa::Byte, 8> bytes{};
    if (m_functions.getAttribute(m_session, attribute, bytes.data()) < 0) {
        return 0;
    }
    std::uint32_t value = 0;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

}  // namespace krv::suite
