// FakeCommandBar: a host's command bar, with buttons whose state is read as text.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "common/Error.h"
#include "ports/office/CommandBar.h"
#include "tests/support/CallLog.h"

namespace krv::tests {

class FakeCommandBar final : public ports::CommandBar {
 public:
    explicit FakeCommandBar(CallLog& log) : m_log(log) {
        for (const char* caption : {"Corvane TQL/KRV", "Connect", "Connected", "Settings",
                                    "PutData", "GetImage", "Help"}) {
            m_controls.push_back(std::make_shared<Button>(*this, caption));
        }
    }

    // A button has another value than before, so that its application would ask whether to save.
    bool IsModified = false;

    // "PutData on shown [tip]", one button a line.
    [[nodiscard]] std::string State() const {
        std::string text;
        for (const auto& control : m_controls) {
            text += control->Caption + (control->Enabled ? " on" : " off") +
                    (control->Visible ? " shown" : " hidden") + " [" + control->ToolTip + "]\n";
        }
        return text;
    }

    std::int32_t ControlCount() override { return static_cast<std::int32_t>(m_controls.size()); }
    std::shared_ptr<ports::CommandBarControl> ControlAt(std::int32_t position) override {
        m_log.Note("position " + std::to_string(position));
        return m_controls.at(static_cast<std::size_t>(position) - 1);
    }
    std::shared_ptr<ports::CommandBarControl> ControlByCaption(
        const std::string& caption) override {
        for (const auto& control : m_controls) {
            if (control->Caption == caption) {
                return control;
            }
        }
        throw Error(5, "Invalid procedure call or argument");
    }

 private:
    class Button final : public ports::CommandBarControl {
     public:
        Button(FakeCommandBar& bar, std::string caption)
            : Caption(std::move(caption)), m_bar(bar) {}
        std::string Caption;
        std::string ToolTip;
        bool Enabled = true;
        bool Visible = true;

        void SetEnabled(bool enabled) override {
            Change(Enabled, enabled, enabled ? " enable" : " disable");
        }
        void SetVisible(bool visible) override {
            Change(Visible, visible, visible ? " show" : " hide");
        }
        void SetTooltipText(const std::string& text) override {
            Change(ToolTip, text, " tip " + text);
        }
        void SetCaption(const std::string& caption) override {
            Change(Caption, caption, " caption " + caption);
        }

     private:
        template <class Kind>
        void Change(Kind& held, const Kind& value, const std::string& call) {
            m_bar.m_log.Note(Caption + call);
            m_bar.IsModified = m_bar.IsModified || held != value;
            held = value;
        }

        FakeCommandBar& m_bar;
    };

    CallLog& m_log;
    std::vector<std::shared_ptr<Button>> m_controls;
};

}  // namespace krv::tests
