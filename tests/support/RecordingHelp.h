// RecordingHelp: notes which help is opened, and how.
#pragma once

#include <string>

#include "ports/desktop/HelpViewer.h"
#include "tests/support/CallLog.h"

namespace krv::tests {

class RecordingHelp final : public ports::HelpViewer {
 public:
    explicit RecordingHelp(CallLog& log) : m_log(log) {}
    void ShowHelp(ports::WindowHandle owner, const std::string& file,
                  ports::HelpCommand command) override {
        m_log.Note("help " + std::to_string(owner) + ' ' + file + ' ' +
                   std::to_string(static_cast<unsigned>(command)));
    }
    void ShowTopic(ports::WindowHandle owner, const std::string& file,
                   const std::string& topic) override {
        m_log.Note("help " + std::to_string(owner) + ' ' + file + " at " + topic);
    }

 private:
    CallLog& m_log;
};

}  // namespace krv::tests
