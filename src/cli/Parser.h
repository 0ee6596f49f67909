// Parser: the command line's commands and options, and what they fill in. For ArgumentParser alone.
#pragma once

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/Arguments.h"
#include "cli/Completion.h"

namespace krv::cli {

class Parser {
 public:
    Parser();

    [[nodiscard]] ParsedArguments Parse(const std::vector<std::string>& words);
    // Of the words that were parsed.
    [[nodiscard]] const OutputArguments& Output() const noexcept { return m_output; }
    [[nodiscard]] std::vector<std::string> CommandsAndOptions() const;

 private:
    CLI::App& AddCommand(const std::string& name, const std::string& description,
                         std::function<ParsedArguments()> filled);
    void AddSim();
    void AddSimServices(CLI::App& command);
    void AddSimFiles(CLI::App& command);
    void AddConnectionOptions(CLI::App& command, ConnectionArguments& arguments,
                              bool isRequired = true);
    // Of a command that takes several instruments.
    void AddAddresses(CLI::App& command, WaveformArguments& arguments);
    static void AddLogOption(CLI::App& command, ConnectionArguments& arguments);
    static void AddVisaOption(CLI::App& command, std::optional<std::string>& library);
    void AddList();
    void AddIdentify();
    void AddProgramOptions();
    void AddDoctor();
    void AddConfig();
    void AddCompletion();
    void TakeModel(CLI::Option& option);
    // The option takes no other words.
    void Restrict(CLI::Option& option, std::vector<std::string> words);
    [[nodiscard]] CompletionValue ValueOf(const CLI::Option& option) const;
    [[nodiscard]] std::vector<CompletionOption> OptionsOf(const CLI::App& app) const;
    [[nodiscard]] CompletionTable Completions() const;
    void AddPanelCommands();
    void AddFiles();
    void AddPlay();
    void AddSet();
    void AddImage();
    void AddStateCommand(StateArguments& arguments, const std::string& name,
                         const std::string& description, const std::string& fileUse);
    void AddWaveformCommand(WaveformCommand command, const std::string& name,
                            const std::string& description);
    void AddSourceOptions(CLI::App& app, WaveformArguments& arguments);
    void AddFormats();
    static void AddJsonOption(CLI::App& command, bool& json);
    void AddImport();
    void AddInfo();
    void AddPlot();
    void AddImportOptions(CLI::App& app, ImportArguments& arguments);
    void AddMarkerOptions(CLI::App& app, WaveformArguments& arguments);
    void AddHelp();
    // Of the command that was parsed; there is one.
    [[nodiscard]] ParsedArguments Filled();
    // What is wrong with a word or asked for by it, whatever stands around it; nothing where the
    // words are to be parsed.
    [[nodiscard]] std::optional<TextAnswer> AnswerToWords(
        const std::vector<std::string>& words) const;
    [[nodiscard]] std::string FaultOf(const std::string& option, const CLI::App& command) const;
    [[nodiscard]] TextAnswer HelpOn(const std::string& topic) const;
    [[nodiscard]] TextAnswer NoSuchCommand(const std::string& name) const;
    [[nodiscard]] bool TakesLog() const;
    // Null where there is none of this name.
    [[nodiscard]] const CLI::App* FindCommand(const std::string& name) const;

    CLI::App m_app{
        "Operates KRV and TQL signal generators, and downloads arbitrary waveforms to them.",
        "krv"};
    SimArguments m_sim;
    ListArguments m_list;
    IdentifyArguments m_identify;
    StatusArguments m_status;
    FilesArguments m_files;
    PlayArguments m_play;
    PlayArguments m_stop;
    SetArguments m_set;
    SendArguments m_send;
    ImageArguments m_image;
    ImportFileArguments m_import;
    FormatsArguments m_formats;
    InfoArguments m_info;
    DoctorArguments m_doctor;
    ConfigArguments m_config;
    OutputArguments m_output;
    PlotArguments m_plot;
    StateArguments m_capture{StateCommand::Capture, {}, {}, false};
    StateArguments m_restore{StateCommand::Restore, {}, {}, false};
    std::vector<std::unique_ptr<WaveformArguments>> m_waveforms;
    // The commands, and what each has filled in.
    std::vector<std::pair<const CLI::App*, std::function<ParsedArguments()>>> m_commands;
    // What the options take that take certain words alone.
    std::map<const CLI::Option*, std::vector<std::string>> m_words;
    std::string m_shell;
    std::string m_helpTopic;
    bool m_opensGuide = false;
    // Named in front of the command.
    std::optional<std::string> m_logFile;
    std::vector<ConnectionArguments*> m_connections;
};

}  // namespace krv::cli
