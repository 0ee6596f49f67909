// ScriptedScreen: a screen without a display, which plays the user.
//
// A test queues actions with Then(). Each time the code under test lets pending events through, or
// a modal dialog waits for input, the next action runs. A modal dialog that waits with nothing
// queued fails the test, since a real one would wait for ever. Timers run by the test: Advance(ms).
//
// As on a real screen the user reaches no other form while one is modal, and none at all while a
// message box is up: such an action does nothing.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/ScopeExit.h"
#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "ports/desktop/EventPump.h"
#include "ports/desktop/FormScreen.h"

namespace krv::tests {

class ScriptedScreen final : public ports::FormScreen, public ports::EventPump {
 public:
    // --- the user's actions; each returns whether the control took it ---------------------------
    bool Click(forms::CommandButton& button) {
        return Reaches(button.Owner()) && button.UserClicks(Input());
    }
    bool Click(forms::CheckBox& box) { return Reaches(box.Owner()) && box.UserClicks(Input()); }
    bool Click(forms::OptionButton& button) {
        return Reaches(button.Owner()) && button.UserClicks(Input());
    }
    bool Type(forms::TextBox& box, const std::string& text) {
        return Reaches(box.Owner()) && box.UserTypes(Input(), text);
    }
    bool Select(forms::ComboBox& box, int index) {
        return Reaches(box.Owner()) && box.UserSelects(Input(), index);
    }
    bool Press(forms::Form& form, int keyCode, bool shift = false) {
        return Reaches(form) && form.UserPressesKey(Input(), keyCode, shift, false, false);
    }
    bool PressWithControl(forms::Form& form, int keyCode) {
        return Reaches(form) && form.UserPressesKey(Input(), keyCode, false, true, false);
    }
    void Activate(forms::Form& form) {
        if (Reaches(form)) {
            form.UserActivates(Input());
        }
    }
    void Close(forms::Form& form) {
        if (Reaches(form)) {
            form.UserCloses(Input());
        }
    }
    [[nodiscard]] bool Reaches(const forms::Form& form) const {
        return m_boxes == 0 && (m_modal.empty() || m_modal.back() == &form);
    }
    // Runs the work while a message box is up.
    void UnderABox(const std::function<void()>& work) {
        ++m_boxes;
        const ScopeExit gone([this] { --m_boxes; });
        work();
    }

    // Queues an action for the next time events are let through.
    void Then(std::function<void()> action) { m_script.push_back(std::move(action)); }
    [[nodiscard]] bool ScriptIsDone() const { return m_script.empty(); }

    // Lets time pass: running timers whose interval is over fire once, in the order they are due.
    void Advance(int milliseconds) {
        m_now += static_cast<std::uint64_t>(milliseconds);
        for (const Wait& wait : std::vector(m_waits)) {
            // An earlier timer's handler may have restarted this one.
            const bool current = std::find(m_waits.begin(), m_waits.end(), wait) != m_waits.end();
            if (current && wait.timer->Running() && wait.due <= m_now) {
                Restart(*wait.timer);
                wait.timer->UserWaited(Input());
            }
        }
    }

    // --- what was seen ---------------------------------------------------------------------------
    // "form property" or "form control property" for each reported change, oldest first.
    std::vector<std::string> Changes;
    std::vector<std::string> Repaints;
    // "load f", "show f", "modal f", "hide f", "unload f".
    std::vector<std::string> Shows;
    // The form shown last, which the test may have no other way to.
    forms::Form* LastShown = nullptr;
    int PumpCount = 0;
    // Called for each reported change of a control, after it is recorded.
    std::function<void(forms::Control&, forms::PropertyId)> OnControlChanged;

    // Makes what is put into a placeholder, by its ProgID; without it placeholders stay empty.
    std::function<std::shared_ptr<ports::ForeignObject>(const std::string&)> MakeForeign;

    // --- FormScreen
    // --------------------------------------------------------------------------------
    void FormLoaded(forms::Form& form) override {
        Shows.push_back("load " + form.Name());
        for (forms::Control* control : form.Controls()) {
            if (control->Kind() == forms::ControlKind::ForeignControl && MakeForeign) {
                auto& foreign = static_cast<forms::ForeignControl&>(*control);
                foreign.SetObject(Input(), MakeForeign(foreign.ProgId));
            }
            if (control->Kind() == forms::ControlKind::Timer) {
                Restart(static_cast<forms::Timer&>(*control));
            }
        }
    }
    void FormUnloaded(forms::Form& form) override {
        Shows.push_back("unload " + form.Name());
        std::erase_if(m_waits, [&](const Wait& wait) { return wait.form == &form; });
        for (forms::Control* control : form.Controls()) {
            if (control->Kind() == forms::ControlKind::ForeignControl) {
                static_cast<forms::ForeignControl&>(*control).SetObject(Input(), nullptr);
            }
        }
    }
    void ShowModeless(forms::Form& form, ports::WindowHandle) override {
        Shows.push_back("show " + form.Name());
        LastShown = &form;
    }
    void RunModal(forms::Form& form, ports::WindowHandle) override {
        Shows.push_back("modal " + form.Name());
        LastShown = &form;
        m_modal.push_back(&form);
        const ScopeExit end([this] { m_modal.pop_back(); });
        Activate(form);
        while (form.IsVisible()) {
            if (m_script.empty()) {
                throw std::logic_error("the modal form " + form.Name() + " waits for ever");
            }
            RunNext();
        }
    }
    void HideForm(forms::Form& form) override { Shows.push_back("hide " + form.Name()); }
    void Repaint(forms::Form& form) override { Repaints.push_back(form.Name()); }
    void Repaint(forms::Control& control) override { Repaints.push_back(NameOf(control)); }
    void FormChanged(forms::Form& form, forms::PropertyId property) override {
        Changes.push_back(form.Name() + ' ' + NameOf(property));
    }
    void ControlChanged(forms::Control& control, forms::PropertyId property) override {
        Changes.push_back(NameOf(control) + ' ' + NameOf(property));
        if (control.Kind() == forms::ControlKind::Timer) {
            Restart(static_cast<forms::Timer&>(control));
        }
        if (OnControlChanged) {
            OnControlChanged(control, property);
        }
    }

    // --- EventPump
    // ---------------------------------------------------------------------------------
    void ProcessPendingEvents() override {
        ++PumpCount;
        if (!m_script.empty()) {
            RunNext();
        }
    }

    static std::string NameOf(const forms::Control& control) {
        const bool element = control.Index() != forms::Control::NoIndex;
        return control.Name() + (element ? '(' + std::to_string(control.Index()) + ')' : "");
    }

 private:
    struct Wait {
        forms::Timer* timer;
        // Kept besides, since a form that was destroyed has no timers left to ask.
        const forms::Form* form;
        std::uint64_t due;
        friend bool operator==(const Wait&, const Wait&) = default;
    };

    void Restart(forms::Timer& timer) {
        std::erase_if(m_waits, [&](const Wait& wait) { return wait.timer == &timer; });
        m_waits.push_back(
            {&timer, &timer.Owner(), m_now + static_cast<std::uint64_t>(timer.Interval())});
        std::stable_sort(m_waits.begin(), m_waits.end(),
                         [](const Wait& left, const Wait& right) { return left.due < right.due; });
    }

    void RunNext() {
        const auto action = std::move(m_script.front());
        m_script.pop_front();
        action();
    }

    static std::string NameOf(forms::PropertyId property) {
        static constexpr std::array<const char*, 16> names{
            "Text",        "Caption",   "Enabled",   "Visible", "Locked",    "TabStop",
            "ToolTipText", "ForeColor", "BackColor", "Items",   "ListIndex", "Value",
            "Min",         "Max",       "Interval",  "Place"};
        return names.at(static_cast<std::size_t>(property));
    }

    std::deque<std::function<void()>> m_script;
    // The innermost is the last.
    std::vector<const forms::Form*> m_modal;
    int m_boxes = 0;
    std::vector<Wait> m_waits;
    std::uint64_t m_now = 0;
};

}  // namespace krv::tests
