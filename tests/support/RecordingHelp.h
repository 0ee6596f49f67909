// RecordingHelp: notes which help is opened, and how.
#pragma once

#include <string>

#include "ports/desktop/HelpViewer.h"
#include "tests/support/CallLog.h"

namespace krv::testing {

class RecordingHelp final : public desktop::HelpViewer {
 public:
    explicit RecordingHelp(CallLog& log) : m_log(log) {}
    void ShowHelp(desktop::WindowHandle owner, const std::string& file,
                  desktop::HelpCommand command) override {
        m_log.Note("help " + std::to_string(owner) + ' ' + file + ' ' +
                   std::to_string(static_cast<unsigned>(command)));
    }

 private:
    CallLog& m_log;
};

}  // namespace krv::testing
