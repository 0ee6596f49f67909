#include "simulator/vxi11/Vxi11Conversation.h"

#include <algorithm>
#include <array>
#include <utility>

#include "simulator/scpi/AsciiCase.h"

namespace krv::simulator {
namespace {

constexpr std::uint32_t CoreProgram = 0x0607AF;
constexpr std::uint32_t AbortProgram = 0x0607B0;
constexpr std::uint32_t Version = 1;

constexpr std::string_view DeviceName = "inst0";
constexpr std::size_t MostNameBytes = 256;

namespace Flag {
constexpr std::uint32_t WaitForLock = 1;
constexpr std::uint32_t End = 8;
constexpr std::uint32_t EndCharacter = 0x80;
}  // namespace Flag

namespace Reason {
constexpr std::uint32_t Count = 1;
constexpr std::uint32_t Character = 2;
constexpr std::uint32_t End = 4;
}  // namespace Reason

}  // namespace

std::vector<MappedProgram> Vxi11Programs(std::uint16_t port) {
    return {{CoreProgram, Version, port}, {AbortProgram, Version, port}};
}

Vxi11Conversation::Vxi11Conversation(std::shared_ptr<Generator> generator,
                                     std::shared_ptr<Vxi11Links> links, std::uint16_t port,
                                     std::string clientName)
    : m_generator(std::move(generator)),
      m_shared(std::move(links)),
      m_port(port),
      m_clientName(std::move(clientName)) {
    const auto addProgram = [this](std::uint32_t number, auto run) {
        m_programs.push_back(
            {number, Version,
             [this, run](std::uint32_t procedure, XdrReader& arguments, XdrWriter& results) {
                 return (this->*run)(procedure, arguments, results);
             }});
    };
    addProgram(CoreProgram, &Vxi11Conversation::Run);
    addProgram(AbortProgram, &Vxi11Conversation::RunAbort);
}

CallReply Vxi11Conversation::Answer(std::span<const std::byte> message,
                                    std::chrono::milliseconds waited) {
    m_waited = waited;
    return AnswerCall(message, m_programs);
}

ClientLink::AfterIntake Vxi11Conversation::TakeAfter() noexcept {
    return std::exchange(m_after, {});
}

bool Vxi11Conversation::HoldsMemory() const noexcept {
    return std::ranges::any_of(m_links,
                               [](const auto& entry) { return entry.second.HoldsMemory(); });
}

std::span<const Vxi11Conversation::Procedure> Vxi11Conversation::Procedures() noexcept {
    using Self = Vxi11Conversation;
    // The last of them would call the client back, or carry out a command of the maker's own.
    static constexpr std::array Table{
        Procedure{10, &Self::CreateLink, 3}, Procedure{11, &Self::Write, 1},
        Procedure{12, &Self::Read, 2},       Procedure{13, &Self::ReadStatusByte, 1},
        Procedure{14, &Self::Trigger},       Procedure{15, &Self::Clear},
        Procedure{16, &Self::GoRemote},      Procedure{17, &Self::GoLocal},
        Procedure{18, &Self::Lock},          Procedure{19, &Self::Unlock},
        Procedure{23, &Self::DestroyLink},   Procedure{20, &Self::Refuse},
        Procedure{22, &Self::Refuse, 1},     Procedure{25, &Self::Refuse},
        Procedure{26, &Self::Refuse}};
    return Table;
}

std::optional<CallStatus> Vxi11Conversation::Run(std::uint32_t procedure, XdrReader& arguments,
                                                 XdrWriter& results) {
    const auto known = Procedures();
    const auto found = std::ranges::find(known, procedure, &Procedure::number);
    if (found == known.end()) {
        return CallStatus::NoProcedure;
    }
    XdrWriter own;
    const Outcome outcome = (this->*found->run)(arguments, own);
    if (!outcome) {
        return std::nullopt;
    }
    results.Number(static_cast<std::uint32_t>(*outcome));
    if (*outcome == Result::Done) {
        results.Written(own);
    } else {
        for (unsigned count = 0; count < found->resultsOfFailure; ++count) {
            results.Number(0);
        }
    }
    return CallStatus::Success;
}

std::optional<CallStatus> Vxi11Conversation::RunAbort(std::uint32_t procedure, XdrReader& arguments,
                                                      XdrWriter& results) {
    if (procedure != 1) {
        return CallStatus::NoProcedure;
    }
    const Result result = m_shared->Abort(arguments.Number()) ? Result::Done : Result::InvalidLink;
    results.Number(static_cast<std::uint32_t>(result));
    return CallStatus::Success;
}

Vxi11Conversation::Outcome Vxi11Conversation::CreateLink(XdrReader& arguments, XdrWriter& results) {
    // A number that the client has for itself.
    static_cast<void>(arguments.Number());
    const bool locks = arguments.Boolean();
    const auto lockTimeOut = ReadTimeOut(arguments);
    if (!EqualAnyCase(arguments.Text(MostNameBytes), DeviceName)) {
        return Result::NotAccessible;
    }
    const auto number = m_shared->Open();
    if (!number) {
        return Result::OutOfResources;
    }
    if (locks && !m_shared->Lock(*number)) {
        m_shared->Close(*number);
        return WaitUntil(lockTimeOut, Result::LockedByAnother);
    }
    m_links.try_emplace(*number, m_shared, *number, m_generator, m_clientName);
    results.Number(*number).Number(m_port).Number(MostWritten);
    return Result::Done;
}

Vxi11Conversation::Outcome Vxi11Conversation::Write(XdrReader& arguments, XdrWriter& results) {
    Access access;
    access.link = arguments.Number();
    access.timeOut = ReadTimeOut(arguments);
    access.lockTimeOut = ReadTimeOut(arguments);
    access.flags = arguments.Number();
    const auto bytes = arguments.Opaque(MostWritten);
    const Outcome admitted = Admit(access);
    if (admitted == Result::Done) {
        m_after = m_links.at(access.link).Write(bytes, (access.flags & Flag::End) != 0);
        results.Number(static_cast<std::uint32_t>(bytes.size()));
    }
    return admitted;
}

Vxi11Conversation::Outcome Vxi11Conversation::Read(XdrReader& arguments, XdrWriter& results) {
    Access access;
    access.link = arguments.Number();
    const std::uint32_t most = arguments.Number();
    access.timeOut = ReadTimeOut(arguments);
    access.lockTimeOut = ReadTimeOut(arguments);
    access.flags = arguments.Number();
    const auto character = static_cast<char>(arguments.Number());
    if (const Outcome admitted = Admit(access); admitted != Result::Done) {
        return admitted;
    }
    Vxi11Link& link = m_links.at(access.link);
    if (!link.IsReadable(m_waited)) {
        return WaitUntil(access.timeOut, Result::TimedOut);
    }
    const bool endsAtCharacter = (access.flags & Flag::EndCharacter) != 0;
    const auto piece = link.Read(most, endsAtCharacter ? std::optional(character) : std::nullopt);
    results.Number((piece.isFull ? Reason::Count : 0) |
                   (piece.endsAtCharacter ? Reason::Character : 0) |
                   (piece.isEnd ? Reason::End : 0));
    results.Opaque(piece.text);
    return Result::Done;
}

Vxi11Conversation::Outcome Vxi11Conversation::ReadStatusByte(XdrReader& arguments,
                                                             XdrWriter& results) {
    const Access access = ReadAccess(arguments);
    const Outcome admitted = Admit(access);
    if (admitted == Result::Done) {
        const bool hasReply = m_links.at(access.link).HasReply();
        const std::lock_guard lock(m_generator->Mutex());
        const bool hasErrors = m_generator->Errors().Count() != 0;
        results.Number(m_generator->Status().StatusByte(hasErrors, hasReply));
    }
    return admitted;
}

Vxi11Conversation::Outcome Vxi11Conversation::Clear(XdrReader& arguments, XdrWriter& /*results*/) {
    const Access access = ReadAccess(arguments);
    const Outcome admitted = Admit(access);
    if (admitted == Result::Done) {
        m_links.at(access.link).Clear();
    }
    return admitted;
}

Vxi11Conversation::Outcome Vxi11Conversation::Trigger(XdrReader& arguments,
                                                      XdrWriter& /*results*/) {
    const Outcome admitted = Admit(ReadAccess(arguments));
    if (admitted == Result::Done) {
        const std::lock_guard lock(m_generator->Mutex());
        try {
            m_generator->TriggerFromBus();
        } catch (const CommandFailure& failure) {
            m_generator->Report(failure.Code(), failure.Detail());
        }
    }
    return admitted;
}

Vxi11Conversation::Outcome Vxi11Conversation::GoRemote(XdrReader& arguments,
                                                       XdrWriter& /*results*/) {
    return SetRemote(arguments, true);
}

Vxi11Conversation::Outcome Vxi11Conversation::GoLocal(XdrReader& arguments,
                                                      XdrWriter& /*results*/) {
    return SetRemote(arguments, false);
}

Vxi11Conversation::Outcome Vxi11Conversation::SetRemote(XdrReader& arguments, bool isRemote) {
    const Outcome admitted = Admit(ReadAccess(arguments));
    if (admitted == Result::Done) {
        const std::lock_guard lock(m_generator->Mutex());
        m_generator->SetRemote(isRemote);
    }
    return admitted;
}

Vxi11Conversation::Outcome Vxi11Conversation::Lock(XdrReader& arguments, XdrWriter& /*results*/) {
    Access access;
    access.link = arguments.Number();
    access.flags = arguments.Number();
    access.lockTimeOut = ReadTimeOut(arguments);
    const Outcome admitted = Admit(access);
    if (admitted == Result::Done && !m_shared->Lock(access.link)) {
        return Result::LockedByAnother;
    }
    return admitted;
}

Vxi11Conversation::Outcome Vxi11Conversation::Unlock(XdrReader& arguments, XdrWriter& /*results*/) {
    const std::uint32_t link = arguments.Number();
    if (!m_links.contains(link)) {
        return Result::InvalidLink;
    }
    return m_shared->Unlock(link) ? Result::Done : Result::NoLock;
}

Vxi11Conversation::Outcome Vxi11Conversation::DestroyLink(XdrReader& arguments,
                                                          XdrWriter& /*results*/) {
    return m_links.erase(arguments.Number()) != 0 ? Result::Done : Result::InvalidLink;
}

Vxi11Conversation::Outcome Vxi11Conversation::Refuse(XdrReader& /*arguments*/,
                                                     XdrWriter& /*results*/) {
    return Result::NotSupported;
}

Vxi11Conversation::Access Vxi11Conversation::ReadAccess(XdrReader& arguments) const {
    Access access;
    access.link = arguments.Number();
    access.flags = arguments.Number();
    access.lockTimeOut = ReadTimeOut(arguments);
    access.timeOut = ReadTimeOut(arguments);
    return access;
}

std::chrono::milliseconds Vxi11Conversation::ReadTimeOut(XdrReader& arguments) const {
    return std::min(std::chrono::milliseconds(arguments.Number()),
                    m_generator->Settings().stallLimit);
}

Vxi11Conversation::Outcome Vxi11Conversation::Admit(const Access& access) {
    if (!m_links.contains(access.link)) {
        return Result::InvalidLink;
    }
    const bool isTold = m_shared->TakeAbort(access.link);
    if (isTold && m_waited.count() != 0) {
        return Result::Aborted;
    }
    if (m_shared->MayUse(access.link)) {
        return Result::Done;
    }
    const bool waits = (access.flags & Flag::WaitForLock) != 0;
    return waits ? WaitUntil(access.lockTimeOut, Result::LockedByAnother) : Result::LockedByAnother;
}

Vxi11Conversation::Outcome Vxi11Conversation::WaitUntil(std::chrono::milliseconds limit,
                                                        Result resultThen) const {
    return m_waited < limit ? Outcome() : resultThen;
}

}  // namespace krv::simulator
