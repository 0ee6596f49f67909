// Vxi11Conversation: the calls of one VXI-11 connection, carried out on the generator.
//
// A connection has links, each with a conversation of SCPI messages of its own. A message ends at
// its line feed or where the client says END, whichever comes first; a reply's last byte says END.
// A link belongs to the connection that has opened it, and ends with it. One thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "simulator/commands/ClientLink.h"
#include "simulator/device/Generator.h"
#include "simulator/vxi11/PortMapper.h"
#include "simulator/vxi11/RemoteCall.h"
#include "simulator/vxi11/Vxi11Link.h"
#include "simulator/vxi11/Vxi11Links.h"

namespace krv::simulator {

class Vxi11Conversation {
 public:
    // How much a client may write in one call, and how long a record may be that holds it.
    static constexpr std::size_t MostWritten = std::size_t{256} << 10;
    static constexpr std::size_t MostRecordBytes = MostWritten + 1024;

    // The port is the one of the connection, which is told to clients for their aborts. The name
    // of the client is for the transcript.
    Vxi11Conversation(std::shared_ptr<Generator> generator, std::shared_ptr<Vxi11Links> links,
                      std::uint16_t port, std::string clientName);
    Vxi11Conversation(const Vxi11Conversation&) = delete;
    Vxi11Conversation& operator=(const Vxi11Conversation&) = delete;

    // Carries out a call that has waited for so long. While it has to wait it is to be asked again.
    [[nodiscard]] CallReply Answer(std::span<const std::byte> message,
                                   std::chrono::milliseconds waited);
    // What the faults make of the data that the last call has brought.
    [[nodiscard]] ClientLink::AfterIntake TakeAfter() noexcept;
    [[nodiscard]] bool HoldsMemory() const noexcept;

 private:
    enum class Result : std::uint8_t {
        Done = 0,
        NotAccessible = 3,
        InvalidLink = 4,
        NotSupported = 8,
        OutOfResources = 9,
        LockedByAnother = 11,
        NoLock = 12,
        TimedOut = 15,
        Aborted = 23
    };
    // Nothing while a call has to wait.
    using Outcome = std::optional<Result>;
    struct Procedure {
        std::uint32_t number;
        Outcome (Vxi11Conversation::*run)(XdrReader& arguments, XdrWriter& results);
        // How many zeros stand for the results of a call that has failed.
        unsigned resultsOfFailure = 0;
    };
    // The parameters that most calls have.
    struct Access {
        std::uint32_t link = 0;
        std::uint32_t flags = 0;
        std::chrono::milliseconds lockTimeOut{0};
        std::chrono::milliseconds timeOut{0};
    };

    [[nodiscard]] static std::span<const Procedure> Procedures() noexcept;
    std::optional<CallStatus> Run(std::uint32_t procedure, XdrReader& arguments,
                                  XdrWriter& results);
    std::optional<CallStatus> RunAbort(std::uint32_t procedure, XdrReader& arguments,
                                       XdrWriter& results);

    Outcome CreateLink(XdrReader& arguments, XdrWriter& results);
    Outcome Write(XdrReader& arguments, XdrWriter& results);
    Outcome Read(XdrReader& arguments, XdrWriter& results);
    Outcome ReadStatusByte(XdrReader& arguments, XdrWriter& results);
    Outcome Trigger(XdrReader& arguments, XdrWriter& results);
    Outcome Clear(XdrReader& arguments, XdrWriter& results);
    Outcome GoRemote(XdrReader& arguments, XdrWriter& results);
    Outcome GoLocal(XdrReader& arguments, XdrWriter& results);
    Outcome Lock(XdrReader& arguments, XdrWriter& results);
    Outcome Unlock(XdrReader& arguments, XdrWriter& results);
    Outcome DestroyLink(XdrReader& arguments, XdrWriter& results);
    Outcome Refuse(XdrReader& arguments, XdrWriter& results);

    [[nodiscard]] Access ReadAccess(XdrReader& arguments) const;
    [[nodiscard]] std::chrono::milliseconds ReadTimeOut(XdrReader& arguments) const;
    // Done when the link may be used now.
    [[nodiscard]] Outcome Admit(const Access& access);
    [[nodiscard]] Outcome WaitUntil(std::chrono::milliseconds limit, Result resultThen) const;
    Outcome SetRemote(XdrReader& arguments, bool isRemote);

    std::shared_ptr<Generator> m_generator;
    std::shared_ptr<Vxi11Links> m_shared;
    std::uint16_t m_port;
    std::string m_clientName;
    std::map<std::uint32_t, Vxi11Link> m_links;
    std::chrono::milliseconds m_waited{0};
    ClientLink::AfterIntake m_after;
    std::vector<RemoteProgram> m_programs;
};

// What the port mapper tells of VXI-11 that is served at the port.
[[nodiscard]] std::vector<MappedProgram> Vxi11Programs(std::uint16_t port);

}  // namespace krv::simulator
