#include "formats/ReaderProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <mutex>
#include <system_error>

#include "common/Error.h"

namespace krv::formats {
namespace {

// Larger than usual, so that both processes work on while the other one does something else.
constexpr int PipeBytes = 1 << 20;

// Only one pipe at a time has its writing end open here: another reader process would get it, too,
// and keep it open.
std::mutex g_starting;

// No signal comes while this exists.
class SignalsBlocked {
 public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

 private:
    sigset_t m_before{};
};

std::string LastError() {
    return std::error_code(errno, std::generic_category()).message();
}

[[noreturn]] void ThrowNotStarted() {
    throw Error(ErrorNumber::InternalError,
                "The process that would read the file can't be started: " + LastError());
}

void Limit(decltype(RLIMIT_AS) resource, std::uint64_t most) {
    rlimit limit{};
    if (getrlimit(resource, &limit) == 0) {
        limit.rlim_cur = static_cast<rlim_t>(std::min<std::uint64_t>(most, limit.rlim_max));
        static_cast<void>(setrlimit(resource, &limit));
    }
}

// What there is already, reserved address space included, stays.
void LimitMemory(std::uint64_t bytes) {
    const auto pageBytes = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    const auto pages = static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES));
    std::uint64_t held = 0;
    if (std::ifstream("/proc/self/statm") >> held) {
        Limit(RLIMIT_AS, held * pageBytes + std::min(bytes, pages * pageBytes));
    }
}

void EndWith(pid_t parent) {
#ifdef __linux__
    prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
    if (getppid() != parent) {
        _exit(1);
    }
}

void Silence() {
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
}

// What the terminal's user wants is the parent's business, and so is a pipe that nobody reads.
void IgnoreSignals() {
    for (const int each : {SIGINT, SIGTERM, SIGPIPE}) {
        signal(each, SIG_IGN);
    }
    // What the parent does at a fault of its own is of no use here.
    for (const int each : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT}) {
        signal(each, SIG_DFL);
    }
}

void SendAll(int pipe, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(pipe, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            _exit(1);
        }
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

// Leaves without what a program does at its end: that is the parent's.
[[noreturn]] void Work(int end, const ReaderLimits& limits,
                       const std::function<void(const ReaderProcess::Send&)>& work) {
    // Where the program was started with closed standard streams, the pipe has one of their
    // numbers.
    const int pipe = fcntl(end, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    try {
        Silence();
        Limit(RLIMIT_CORE, 0);
        Limit(RLIMIT_CPU, limits.seconds);
        LimitMemory(limits.memoryBytes);
        work([pipe](std::span<const std::byte> bytes) { SendAll(pipe, bytes); });
    } catch (...) {
        _exit(1);
    }
    _exit(0);
}

}  // namespace

ReaderProcess::ReaderProcess(const ReaderLimits& limits,
                             const std::function<void(const Send&)>& work) {
    const std::lock_guard lock(g_starting);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        ThrowNotStarted();
    }
    static_cast<void>(fcntl(ends[1], F_SETPIPE_SZ, PipeBytes));
    const pid_t parent = getpid();
    {
        const SignalsBlocked blocked;
        m_id = fork();
        if (m_id == 0) {
            IgnoreSignals();
        }
    }
    if (m_id == 0) {
        EndWith(parent);
        close(ends[0]);
        Work(ends[1], limits, work);
    }
    const int reason = errno;
    close(ends[1]);
    m_pipe = ends[0];
    if (m_id < 0) {
        close(m_pipe);
        errno = reason;
        ThrowNotStarted();
    }
}

ReaderProcess::~ReaderProcess() {
    close(m_pipe);
    // What has ended by itself, and was forgotten by the system, has an id that may be another's.
    if (waitpid(m_id, nullptr, WNOHANG) != 0) {
        return;
    }
    kill(m_id, SIGKILL);
    while (waitpid(m_id, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool ReaderProcess::Receive(std::span<std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = read(m_pipe, bytes.data(), bytes.size());
        if (count == 0 || (count < 0 && errno != EINTR)) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

}  // namespace krv::formats
