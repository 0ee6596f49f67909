#include "suite/transport/visa/VisaTransport.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <utility>

#include "suite/transport/Patience.h"
#include "suite/transport/SerialAddress.h"
#include "suite/transport/TransportErrors.h"
#include "suite/transport/visa/CallThread.h"
#include "suite/transport/visa/VisaLibrary.h"
#include "suite/transport/visa/VisaSession.h"

namespace krv::suite {
namespace {

using std::chrono::milliseconds;
using LinkKind = VisaSession::Kind;

// The library's own time-outs come first, so that what it moved until then is known.
constexpr milliseconds Grace{250};
// How long a wait is for the library, where it may be taken up again. The bus is free that soon
// when nobody waits any more.
constexpr milliseconds Slice{1000};
// How long the end waits for an instrument to be cleared and closed.
constexpr milliseconds ClosingTime{3000};

std::string CodeText(visa::Status status) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(status));
    return text.data();
}

class VisaTransport final : public Transport, public ports::SerialSession {
 public:
    VisaTransport(const std::string& resource, std::string name, std::string library,
                  const TimeOuts& timeOuts)
        : m_name(std::move(name)), m_timeOuts(timeOuts) {
        try {
            Load(std::move(library));
            Open(resource);
        } catch (...) {
            Finish();
            throw;
        }
    }
    ~VisaTransport() override { Finish(); }
    VisaTransport(const VisaTransport&) = delete;
    VisaTransport& operator=(const VisaTransport&) = delete;

    void Send(std::span<const std::byte> bytes, MessagePart part) override {
        m_isWhole = false;
        m_isRemote = true;
        Patience patience = NewPatience();
        while (!bytes.empty()) {
            const auto piece = bytes.first(std::min(bytes.size(), PieceSize()));
            const bool isEnd = part == MessagePart::Last && piece.size() == bytes.size();
            const std::size_t sent = SendPiece(piece, isEnd);
            patience.Moved(static_cast<std::int64_t>(sent));
            if (patience.IsOver() || (sent == 0 && !TakesUpWrites())) {
                throw NotTakenError(m_name, m_timeOuts.inactivity);
            }
            bytes = bytes.subspan(sent);
        }
        m_isWhole = part == MessagePart::Last;
    }

    std::size_t Receive(std::span<std::byte> bytes) override {
        m_isWhole = false;
        m_receivedEnd = false;
        const Patience patience = NewPatience();
        while (true) {
            const visa::Status status = ReceivePiece(bytes.size());
            if (m_session->Count() > 0 || status >= 0) {
                return Taken(status, bytes);
            }
            if (status != visa::StatusCode::TimeOut) {
                throw Failure(status);
            }
            if (patience.IsOver()) {
                throw NoAnswerError(m_name, m_timeOuts.inactivity);
            }
        }
    }

    [[nodiscard]] bool HasReceivedEnd() const override { return m_receivedEnd; }

    [[nodiscard]] std::optional<std::uint8_t> StatusByte() override {
        if (IsStream()) {
            return std::nullopt;
        }
        if (m_timeOuts.watcher != nullptr) {
            m_timeOuts.watcher->Waiting();
        }
        const auto byte = std::make_shared<std::uint8_t>();
        const auto status =
            Call([byte](VisaSession& session) { return session.ReadStatusByte(*byte); });
        if (status && *status == visa::StatusCode::NotSupported) {
            return std::nullopt;
        }
        if (!status || (*status < 0 && *status != visa::StatusCode::TimeOut)) {
            throw status ? Failure(*status) : NoAnswerError(m_name, m_timeOuts.inactivity);
        }
        return *status < 0 ? std::uint8_t{0} : *byte;
    }

    bool ReturnToLocal() override {
        m_isRemote = false;
        if (!HasLocalLine()) {
            return false;
        }
        const auto status = Call([](VisaSession& session) { return session.GoToLocal(); });
        return status && *status >= 0;
    }

    void SetTimeOuts(const TimeOuts& timeOuts) override { m_timeOuts = timeOuts; }

    [[nodiscard]] std::string Kind() const override {
        switch (m_session->KindOfLink()) {
            case LinkKind::Gpib:
                return "GPIB";
            case LinkKind::Usb:
                return "USB";
            case LinkKind::Serial:
                return "RS-232";
            default:
                return "LAN";
        }
    }

    ports::SerialSession* Serial() override {
        return m_session->KindOfLink() == LinkKind::Serial ? this : nullptr;
    }
    std::int32_t BaudRate() override { return m_session->Line().baudRate; }
    std::int32_t DataBits() override { return SerialAddress::DataBits; }
    std::int32_t StopBits() override {
        return static_cast<std::int32_t>(m_session->Line().stopBits);
    }

 private:
    // Libraries may take seconds to load.
    void Load(std::string library) {
        const auto loaded = std::make_shared<VisaLibrary>();
        const bool isDone =
            m_thread.Run([loaded, library = std::move(library)] { *loaded = LoadVisa(library); },
                         Patience::Clock::now() + m_timeOuts.connect + Grace, m_timeOuts.watcher);
        if (!isDone || !loaded->fault.empty()) {
            throw ConnectError(m_name, isDone ? loaded->fault : "VISA does not start");
        }
        m_session = std::make_shared<VisaSession>(loaded->functions);
    }

    void Open(const std::string& resource) {
        const std::size_t question = std::min(resource.find('?'), resource.size());
        std::optional<SerialAddress> line;
        if (question < resource.size()) {
            line = ParseSerialAddress(resource);
        }
        const auto status =
            Call([name = resource.substr(0, question), line, timeOut = m_timeOuts.connect](
                     VisaSession& session) { return session.Open(name, line, timeOut); },
                 m_timeOuts.connect);
        if (!status) {
            throw ConnectError(m_name, "no answer within " + SecondsText(m_timeOuts.connect));
        }
        if (*status < 0) {
            throw ConnectError(m_name, ReasonOf(*status));
        }
        m_isOpen = true;
    }

    // Runs the work on the session's own thread. Nothing when it takes longer than the limit.
    template <class Work>
    std::optional<visa::Status> Call(Work work, milliseconds limit) {
        const auto status = std::make_shared<visa::Status>();
        const bool isDone = m_thread.Run(
            [session = m_session, status, work = std::move(work)] { *status = work(*session); },
            Patience::Clock::now() + limit + Grace, m_timeOuts.watcher);
        return isDone ? std::optional(*status) : std::nullopt;
    }
    template <class Work>
    std::optional<visa::Status> Call(Work work) {
        return Call(std::move(work), m_timeOuts.inactivity);
    }

    // Whoever goes away leaves the bytes to the call.
    std::size_t SendPiece(std::span<const std::byte> piece, bool isEnd) {
        const auto bytes = std::make_shared<std::vector<std::byte>>(piece.begin(), piece.end());
        const milliseconds limit =
            TakesUpWrites() ? std::min(m_timeOuts.inactivity, Slice) : m_timeOuts.inactivity;
        const auto status = Call([bytes, isEnd, limit](VisaSession& session) {
            return session.Write(*bytes, isEnd, limit);
        });
        if (!status) {
            throw NotTakenError(m_name, m_timeOuts.inactivity);
        }
        if (*status < 0 && *status != visa::StatusCode::TimeOut) {
            throw Failure(*status);
        }
        return *status < 0 && GivesUpTransfers() ? 0 : m_session->Count();
    }

    visa::Status ReceivePiece(std::size_t most) {
        const milliseconds slice =
            GivesUpTransfers() ? m_timeOuts.inactivity : std::min(m_timeOuts.inactivity, Slice);
        const auto status =
            Call([most, slice](VisaSession& session) { return session.Read(most, slice); });
        if (!status) {
            throw NoAnswerError(m_name, m_timeOuts.inactivity);
        }
        return *status;
    }

    std::size_t Taken(visa::Status status, std::span<std::byte> bytes) {
        const auto received = m_session->Received();
        std::ranges::copy(received, bytes.begin());
        m_receivedEnd = status == visa::StatusCode::EndReceived && !IsStream();
        m_isWhole = m_receivedEnd || IsStream();
        return received.size();
    }

    [[nodiscard]] Patience NewPatience() {
        return {m_timeOuts.inactivity, Patience::LeastRateOf(Serial())};
    }
    // What goes well within a time-out.
    [[nodiscard]] std::size_t PieceSize() {
        if (Serial() == nullptr) {
            return VisaSession::MostBytes;
        }
        const std::int64_t bytes = BaudRate() / 10 * m_timeOuts.inactivity.count() / 4000;
        return static_cast<std::size_t>(
            std::clamp<std::int64_t>(bytes, 1, std::int64_t{VisaSession::MostBytes}));
    }
    [[nodiscard]] bool IsStream() const {
        return m_session->KindOfLink() == LinkKind::Stream ||
               m_session->KindOfLink() == LinkKind::Serial;
    }
    // A transfer over USB that runs into a time-out is given up on both sides, so that it can't be
    // taken up again.
    [[nodiscard]] bool GivesUpTransfers() const { return m_session->KindOfLink() == LinkKind::Usb; }
    // At GPIB an instrument holds the bus while it stores, and the library knows how many bytes
    // have gone. Over a network they may be on their way.
    [[nodiscard]] bool TakesUpWrites() const { return m_session->KindOfLink() == LinkKind::Gpib; }
    [[nodiscard]] bool HasLocalLine() const {
        return m_session->KindOfLink() == LinkKind::Gpib ||
               m_session->KindOfLink() == LinkKind::Usb;
    }

    std::string ReasonOf(visa::Status failure) {
        if (std::string meaning = MeaningOf(failure); !meaning.empty()) {
            return meaning;
        }
        const auto text = std::make_shared<std::string>();
        static_cast<void>(Call([text, failure](VisaSession& session) {
            *text = session.Describe(failure);
            return failure;
        }));
        return "VISA reports " + CodeText(failure) + (text->empty() ? "" : ", " + *text);
    }
    Error Failure(visa::Status failure) {
        return failure == visa::StatusCode::ConnectionLost
                   ? ClosedError(m_name)
                   : ConnectionError(m_name, ReasonOf(failure));
    }

    // Unlike a connection in a network, an instrument at GPIB or USB doesn't forget half a message
    // when the session is closed.
    void Finish() noexcept {
        const bool isToClear = m_isOpen && !m_isWhole;
        const bool isToLeave = m_isOpen && m_isRemote && HasLocalLine();
        m_thread.Finish(
            [session = m_session, isToClear, isToLeave] {
                if (isToClear) {
                    session->Clear();
                }
                if (isToLeave) {
                    static_cast<void>(session->GoToLocal());
                }
                if (session != nullptr) {
                    session->Close();
                }
            },
            m_isOpen ? ClosingTime : milliseconds(0));
    }

    std::string m_name;
    TimeOuts m_timeOuts;
    CallThread m_thread;
    std::shared_ptr<VisaSession> m_session;
    bool m_isOpen = false;
    // Nothing of a message is on its way.
    bool m_isWhole = true;
    bool m_receivedEnd = false;
    // The instrument's front panel may be locked.
    bool m_isRemote = false;
};

}  // namespace

void AddVisaTransport(TransportRegistry& registry, const std::string& library) {
    registry.Add("visa", [library](const std::string& resource, const TimeOuts& timeOuts) {
        return std::make_unique<VisaTransport>(resource, "visa://" + resource, library, timeOuts);
    });
}

}  // namespace krv::suite
