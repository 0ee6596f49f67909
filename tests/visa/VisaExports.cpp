// The functions that a VISA library offers, over the sessions of BenchVisa.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include "suite/transport/visa/VisaApi.h"
#include "tests/visa/BenchVisa.h"

#ifdef _WIN32
#define BENCH_EXPORT extern "C" __declspec(dllexport)
#else
#define BENCH_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

using namespace krv::suite::visa;
using krv::tests::BenchSession;
using krv::tests::HasFault;
using krv::tests::Trace;
using Outcome = BenchSession::Outcome;

constexpr std::array Resources{"GPIB0::19::INSTR", "GPIB0::20::INSTR", "ASRL1::INSTR",
                               "PXI0::1::INSTR"};
constexpr Object Manager = 1;
constexpr Object List = 2;
constexpr Status TermCharRead = 0x3FFF0005;
constexpr Status MoreToRead = 0x3FFF0006;

std::mutex mutex;
std::map<Object, std::shared_ptr<BenchSession>> sessions;
Object lastSession = 100;
std::size_t nextResource = 0;

std::shared_ptr<BenchSession> SessionOf(Object object) {
    const std::lock_guard lock(mutex);
    const auto found = sessions.find(object);
    if (found == sessions.end()) {
        throw std::out_of_range("no such session");
    }
    return found->second;
}

// No exception may reach a caller.
template <class Work>
Status Guarded(Work work) noexcept {
    try {
        return work();
    } catch (const std::exception&) {
        return StatusCode::InputOutput;
    }
}

template <class Value>
Status Give(void* target, Value value) {
    std::memcpy(target, &value, sizeof value);
    return 0;
}

Status GiveText(char* target, const std::string& text) {
    std::memcpy(target, text.c_str(), text.size() + 1);
    return 0;
}

Status OpenFault(const std::string& name) {
    if (HasFault("hang")) {
        std::this_thread::sleep_for(std::chrono::seconds(60));
        return StatusCode::TimeOut;
    }
    return HasFault("locked")                     ? StatusCode::ResourceLocked
           : HasFault("forbidden")                ? StatusCode::NoPermission
           : HasFault("absent")                   ? StatusCode::ResourceNotFound
           : name.starts_with("GPIB0::20")        ? StatusCode::NobodyListens
           : name.find("::") == std::string::npos ? StatusCode::InvalidName
                                                  : 0;
}

}  // namespace

BENCH_EXPORT Status KRV_VISA_CALL viOpenDefaultRM(Object* manager) {
    return Give(manager, Manager);
}

BENCH_EXPORT Status KRV_VISA_CALL viOpen(Object, const char* name, std::uint32_t, std::uint32_t,
                                         Object* session) {
    return Guarded([&] {
        if (const Status fault = OpenFault(name); fault < 0) {
            return fault;
        }
        auto opened = std::make_shared<BenchSession>(name);
        const std::lock_guard lock(mutex);
        sessions[++lastSession] = std::move(opened);
        return Give(session, lastSession);
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viClose(Object object) {
    return Guarded([&] {
        const std::lock_guard lock(mutex);
        if (sessions.erase(object) > 0) {
            Trace("close");
        }
        return Status{0};
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viWrite(Object object, const Byte* bytes, std::uint32_t count,
                                          std::uint32_t* done) {
    return Guarded([&] {
        const std::string text(reinterpret_cast<const char*>(bytes), count);
        return SessionOf(object)->Write(text, *done) == Outcome::TimeOut ? StatusCode::TimeOut
                                                                         : Status{0};
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viRead(Object object, Byte* bytes, std::uint32_t count,
                                         std::uint32_t* done) {
    return Guarded([&] {
        std::string read;
        const Outcome outcome = SessionOf(object)->Read(count, read);
        std::memcpy(bytes, read.data(), read.size());
        *done = static_cast<std::uint32_t>(read.size());
        return outcome == Outcome::TimeOut   ? StatusCode::TimeOut
               : outcome == Outcome::LineEnd ? TermCharRead
               : outcome == Outcome::More    ? MoreToRead
                                             : Status{0};
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viSetAttribute(Object object, Attribute attribute,
                                                 AttributeState value) {
    return Guarded([&] {
        BenchSession& session = *SessionOf(object);
        switch (attribute) {
            case AttributeId::TimeOutMs:
                session.timeOutMs = static_cast<std::uint32_t>(value);
                break;
            case AttributeId::SendEnd:
                session.assertsEnd = value != 0;
                break;
            case AttributeId::TermCharEnabled:
                session.stopsAtLineEnd = value != 0;
                break;
            case AttributeId::BaudRate:
                session.baudRate = static_cast<std::uint32_t>(value);
                break;
            default:
                break;
        }
        return Status{0};
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viGetAttribute(Object object, Attribute attribute, void* value) {
    return Guarded([&] {
        const BenchSession& session = *SessionOf(object);
        const bool isSocket = session.LinkKind() == BenchSession::Kind::Socket;
        switch (attribute) {
            case AttributeId::InterfaceType:
                return Give(value,
                            isSocket ? InterfaceCode::Lan : static_cast<Word>(session.LinkKind()));
            case AttributeId::ResourceClass:
                return GiveText(static_cast<char*>(value), isSocket ? "SOCKET" : "INSTR");
            case AttributeId::BaudRate:
                return Give(value, session.baudRate);
            case AttributeId::StopBits:
                return Give(value, Word{20});
            default:
                return StatusCode::NotSupported;
        }
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viClear(Object object) {
    return Guarded([&] {
        Trace("clear");
        SessionOf(object)->Clear();
        return Status{0};
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viReadSTB(Object object, Word* status) {
    return Guarded(
        [&] { return Give(status, static_cast<Word>(SessionOf(object)->StatusByte())); });
}

BENCH_EXPORT Status KRV_VISA_CALL viGpibControlREN(Object object, Word mode) {
    return Guarded([&] {
        const auto kind = SessionOf(object)->LinkKind();
        if (kind != BenchSession::Kind::Gpib && kind != BenchSession::Kind::Usb) {
            return StatusCode::NotSupported;
        }
        Trace("remote control " + std::to_string(mode));
        return Status{0};
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viFindRsrc(Object, const char*, Object* list,
                                             std::uint32_t* count, char* first) {
    return Guarded([&] {
        Give(list, List);
        Give(count, static_cast<std::uint32_t>(Resources.size()));
        nextResource = 1;
        return GiveText(first, Resources[0]);
    });
}

BENCH_EXPORT Status KRV_VISA_CALL viFindNext(Object, char* next) {
    return nextResource < Resources.size() ? GiveText(next, Resources[nextResource++])
                                           : StatusCode::ResourceNotFound;
}

BENCH_EXPORT Status KRV_VISA_CALL viStatusDesc(Object, Status, char* text) {
    return GiveText(text, "a failure of the bench");
}
