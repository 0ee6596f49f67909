#include "simulator/vxi11/PortMapper.h"

#include <utility>

namespace krv::simulator {
namespace {

constexpr std::uint32_t PortMapperProgram = 100000;
constexpr std::uint32_t PortMapperVersion = 2;
constexpr std::uint32_t OverTcp = 6;

enum Procedure : std::uint32_t { Set = 1, Unset = 2, GetPort = 3, Dump = 4 };

std::uint32_t PortOf(const std::vector<MappedProgram>& programs, XdrReader& arguments) {
    const std::uint32_t number = arguments.Number();
    const std::uint32_t version = arguments.Number();
    const std::uint32_t protocol = arguments.Number();
    static_cast<void>(arguments.Number());
    for (const MappedProgram& program : programs) {
        if (program.number == number && program.version == version && protocol == OverTcp) {
            return program.port;
        }
    }
    return 0;
}

// Each entry follows a mark that there is one more.
void List(const std::vector<MappedProgram>& programs, XdrWriter& results) {
    for (const MappedProgram& program : programs) {
        results.Number(1).Number(program.number).Number(program.version);
        results.Number(OverTcp).Number(program.port);
    }
    results.Number(0);
}

}  // namespace

RemoteProgram PortMapper(std::vector<MappedProgram> programs) {
    return {PortMapperProgram, PortMapperVersion,
            [programs = std::move(programs)](std::uint32_t procedure, XdrReader& arguments,
                                             XdrWriter& results) -> std::optional<CallStatus> {
                switch (procedure) {
                    case Set:
                    case Unset:
                        results.Number(0);
                        return CallStatus::Success;
                    case GetPort:
                        results.Number(PortOf(programs, arguments));
                        return CallStatus::Success;
                    case Dump:
                        List(programs, results);
                        return CallStatus::Success;
                    default:
                        return CallStatus::NoProcedure;
                }
            }};
}

}  // namespace krv::simulator
