#include "cli/SeveralDownloads.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <istream>
#include <new>
#include <optional>
#include <ostream>
#include <set>
#include <sstream>
#include <streambuf>
#include <string_view>
#include <thread>
#include <utility>

#include "cli/CancelKey.h"
#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/InstrumentLink.h"
#include "cli/JsonOutput.h"
#include "cli/Messages.h"
#include "cli/Report.h"
#include "cli/WaveformJob.h"
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"

namespace krv::cli {
namespace {

const char* OutcomeOf(int exitCode) {
    return exitCode == ExitCode::Done        ? "done"
           : exitCode == ExitCode::Cancelled ? "cancelled"
                                             : "failed";
}

// An instrument may have several spellings. What can't be an address fails by itself.
void RequireDifferent(const std::vector<std::string>& addresses) {
    std::set<std::string> known;
    for (const std::string& given : addresses) {
        std::string address = given;
        TrapErrors([&] { address = AddressWithScheme(given); });
        if (!known.insert(UpperCase(address)).second) {
            throw UsageError("--address names an instrument twice.");
        }
    }
}

}  // namespace

class SeveralDownloads::Lane {
 public:
    Lane(SeveralDownloads& owner, std::string address, Interruptions& interruptions,
         ProgressRow& row)
        : m_owner(owner),
          m_address(std::move(address)),
          m_row(row),
          m_arguments(owner.m_arguments),
          m_typed([this] { return m_owner.Ask(*this); }),
          m_in(&m_typed),
          m_console{m_in, m_out, m_err, interruptions},
          m_work{owner.m_import.get(), nullptr, &row} {
        m_arguments.connection.address = m_address;
        m_console.canAsk = owner.m_console.canAsk;
        m_console.numberFormat = owner.m_console.numberFormat;
        m_console.environment = owner.m_console.environment;
        m_job.emplace(m_arguments, m_console, &m_work);
        m_row.Show("", "waiting");
    }
    Lane(const Lane&) = delete;
    Lane& operator=(const Lane&) = delete;
    ~Lane() { Join(); }

    // Throws UsageError.
    void Prepare() { m_job->Prepare(); }
    void Start(const std::shared_ptr<suite::ConversationLog>& log) {
        m_work.log = log;
        m_thread = std::thread([this] {
            Run();
            m_owner.Leave();
        });
    }
    void Join() {
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }

    // What it has written since the last time, with its name in front.
    void PrintErrors(std::ostream& err) {
        if (const std::string text = m_err.str(); !text.empty()) {
            err << m_address << ":\n" << text;
            m_err.str("");
        }
    }
    void PrintResults(std::ostream& out) const {
        if (const std::string text = m_out.str(); !text.empty()) {
            out << m_address << ":\n" << text;
        }
    }
    void PrintOutcome(std::size_t width, std::ostream& out) const {
        out << m_address << std::string(width - m_address.size() + 2, ' ') << OutcomeOf(m_exitCode)
            << '\n';
    }
    [[nodiscard]] const std::string& Address() const noexcept { return m_address; }
    [[nodiscard]] int ExitCodeOfRun() const noexcept { return m_exitCode; }
    [[nodiscard]] OutputJson Describe() {
        OutputJson json{{"address", m_address}};
        json.update(OutputJson::parse(m_job->ReportText(m_exitCode)));
        return json;
    }

 private:
    // An input whose lines are typed when they are read.
    class TypedLines final : public std::streambuf {
     public:
        explicit TypedLines(std::function<std::string()> ask) : m_ask(std::move(ask)) {}

     protected:
        int_type underflow() override {
            m_line = m_ask();
            setg(m_line.data(), m_line.data(), m_line.data() + m_line.size());
            return m_line.empty() ? traits_type::eof() : traits_type::to_int_type(m_line.front());
        }

     private:
        std::function<std::string()> m_ask;
        std::string m_line;
    };

    void Run() {
        try {
            m_exitCode = m_job->Run();
        } catch (const std::exception& error) {
            PrintFailure(m_err, error.what());
        }
        m_row.Show("", OutcomeOf(m_exitCode));
    }

    SeveralDownloads& m_owner;
    std::string m_address;
    ProgressRow& m_row;
    WaveformArguments m_arguments;
    TypedLines m_typed;
    std::istream m_in;
    std::ostringstream m_out;
    std::ostringstream m_err;
    Console m_console;
    LaneWork m_work;
    std::optional<WaveformJob> m_job;
    std::thread m_thread;
    int m_exitCode = ExitCode::Failed;
};

SeveralDownloads::SeveralDownloads(const WaveformArguments& arguments, Console& console)
    : m_arguments(arguments),
      m_console(console),
      m_interruptions(console.interruptions, arguments.addresses.size()) {}

SeveralDownloads::~SeveralDownloads() {
    m_interruptions.StopWatching();
}

void SeveralDownloads::Prepare() {
    RequireDifferent(m_arguments.addresses);
    try {
        m_import = WaveformImport::For(m_arguments, m_console, m_files);
        MakeLanes();
    } catch (const UsageError& error) {
        m_lanes.clear();
        m_error = error.what();
        if (m_arguments.reportFile && MayBecomeReport(*m_arguments.reportFile)) {
            TrapErrors([&] { WriteReport("failed"); });
        }
        throw;
    }
}

int SeveralDownloads::Run() {
    WriteReport("unfinished");
    int exitCode = ExitCode::Failed;
    try {
        Import();
        RunLanes();
        exitCode = ExitCodeOfAll();
    } catch (const Error& error) {
        if (error.IsCancel()) {
            exitCode = ExitCode::Cancelled;
        } else {
            Fail(error.Description());
        }
    } catch (const std::bad_alloc&) {
        Fail("Out of memory.");
    }
    m_table->Hide();
    WriteReport(OutcomeOf(exitCode));
    return exitCode;
}

void SeveralDownloads::Fail(const std::string& description) {
    m_table->Hide();
    m_error = description;
    PrintFailure(m_console.err, description);
}

void SeveralDownloads::Import() {
    if (m_import) {
        const CancelKey key(m_console.interruptions);
        m_import->Read([&key] {
            if (key.Pressed()) {
                throw CancelError();
            }
        });
    }
}

void SeveralDownloads::MakeLanes() {
    m_table = std::make_unique<ProgressTable>(m_console, m_arguments.addresses);
    for (std::size_t at = 0; at < m_arguments.addresses.size(); ++at) {
        m_lanes.push_back(std::make_unique<Lane>(*this, m_arguments.addresses[at],
                                                 m_interruptions.For(at), m_table->Row(at)));
        m_lanes.back()->Prepare();
    }
}

void SeveralDownloads::RunLanes() {
    const auto log = OpenLog(m_arguments.connection);
    m_interruptions.Watch();
    m_running = m_lanes.size();
    for (const auto& lane : m_lanes) {
        lane->Start(log);
    }
    Attend();
    for (const auto& lane : m_lanes) {
        lane->Join();
    }
    m_interruptions.StopWatching();
    m_table->Hide();
    PrintLanes();
}

void SeveralDownloads::Attend() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_running == 0 || (m_asking && !m_isAnswered); });
        if (m_running == 0) {
            return;
        }
        lock.unlock();
        m_table->Hide();
        m_asking->PrintErrors(m_console.err);
        m_console.err.flush();
        std::string line;
        // Ctrl-C answers the other questions, too.
        if (!m_interruptions.HasBeenPressed() && !std::getline(m_console.in, line)) {
            m_console.in.clear();
        }
        m_table->Reveal();
        lock.lock();
        m_answer = line + '\n';
        m_isAnswered = true;
        m_changed.notify_all();
    }
}

std::string SeveralDownloads::Ask(Lane& lane) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_asking == nullptr; });
    m_asking = &lane;
    m_isAnswered = false;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_isAnswered; });
    m_asking = nullptr;
    m_changed.notify_all();
    return std::exchange(m_answer, {});
}

void SeveralDownloads::Leave() {
    const std::lock_guard lock(m_mutex);
    --m_running;
    m_changed.notify_all();
}

void SeveralDownloads::PrintLanes() {
    std::size_t width = 0;
    for (const auto& lane : m_lanes) {
        width = std::max(width, lane->Address().size());
    }
    if (m_import && m_import->Waveform() != nullptr) {
        PrintImport(*m_import->Waveform(), m_console.out, m_console.err);
    }
    for (const auto& lane : m_lanes) {
        lane->PrintErrors(m_console.err);
        lane->PrintResults(m_console.out);
    }
    for (const auto& lane : m_lanes) {
        lane->PrintOutcome(width, m_console.out);
    }
}

int SeveralDownloads::ExitCodeOfAll() const {
    int exitCode = ExitCode::Done;
    for (const auto& lane : m_lanes) {
        // A failure says more than a cancel.
        if (exitCode != ExitCode::Failed && lane->ExitCodeOfRun() != ExitCode::Done) {
            exitCode = lane->ExitCodeOfRun();
        }
    }
    return exitCode;
}

std::string SeveralDownloads::ReportText(const char* outcome) const {
    OutputJson instruments = OutputJson::array();
    for (const auto& lane : m_lanes) {
        instruments.push_back(lane->Describe());
    }
    return AsText({{"command", "download"},
                   {"outcome", outcome},
                   {"error", TextOrNull(m_error)},
                   {"instruments", instruments}});
}

std::string SeveralDownloads::ReportText(int exitCode) const {
    return ReportText(OutcomeOf(exitCode));
}

void SeveralDownloads::WriteReport(const char* outcome) const {
    const auto& file = m_arguments.reportFile;
    const bool isFirst = std::string_view(outcome) == "unfinished";
    if (file && !(isFirst && IsDeviceOrPipe(PathOf(*file)))) {
        WriteText(*file, ReportText(outcome));
    }
}

}  // namespace krv::cli
