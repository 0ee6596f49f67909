#include "common/forms/Form.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "common/Error.h"
#include "common/ScopeExit.h"

namespace krv::forms {

Form::Form(std::string name, ports::FormScreen& screen)
    : Caption(*this, PropertyId::Caption),
      Place(*this, PropertyId::Place),
      m_name(std::move(name)),
      m_screen(screen) {}

Form::~Form() {
    // The derived form and its controls are gone by now: only the screen gets a notice.
    if (m_loaded) {
        m_screen.FormUnloaded(*this);
    }
}

void Form::Load() {
    if (m_loaded) {
        return;
    }
    m_loaded = true;
    try {
        m_screen.FormLoaded(*this);
    } catch (...) {
        m_loaded = false;
        throw;
    }
    try {
        OnLoad();
    } catch (...) {
        m_loaded = false;
        m_screen.FormUnloaded(*this);
        throw;
    }
}

void Form::ShowModeless(ports::WindowHandle owner) {
    if (m_visible && m_modal) {
        return;
    }
    Load();
    m_visible = true;
    m_screen.ShowModeless(*this, owner);
}

void Form::ShowModal(ports::WindowHandle owner) {
    if (m_visible) {
        throw Error(ErrorNumber::FormAlreadyShown);
    }
    Load();
    m_visible = true;
    m_modal = true;
    // A screen that is being shut down, or fails, ends the loop of a form that isn't hidden yet.
    const ScopeExit end([this] {
        m_modal = false;
        Hide();
    });
    m_screen.RunModal(*this, owner);
}

void Form::Hide() {
    if (m_visible) {
        m_visible = false;
        m_screen.HideForm(*this);
    }
}

void Form::Unload() {
    if (!m_loaded) {
        return;
    }
    Hide();
    m_loaded = false;
    m_screen.FormUnloaded(*this);
    OnUnload();
}

void Form::Refresh() {
    if (m_loaded) {
        m_screen.Repaint(*this);
    }
}

void Form::RemoveControl(const Control& control) {
    // Controls go in the opposite order of their coming, so the search is short.
    const auto found = std::find(m_controls.rbegin(), m_controls.rend(), &control);
    if (found != m_controls.rend()) {
        m_controls.erase(std::next(found).base());
    }
}

std::string Form::StateText() const {
    std::string text = m_name + " \"" + Caption.Get() + '"';
    text += m_visible ? " visible\n" : " hidden\n";
    for (const Control* control : m_controls) {
        text += control->StateText() + '\n';
    }
    return text;
}

void Form::UserActivates(ports::UserInput /*input*/) {
    if (m_visible) {
        OnActivate();
    }
}

void Form::UserCloses(ports::UserInput /*input*/) {
    if (m_visible) {
        OnQueryClose();
    }
}

bool Form::UserPressesKey(ports::UserInput /*input*/, int keyCode, bool shift, bool control,
                          bool alt) {
    return m_visible && OnKeyDown(keyCode, shift, control, alt);
}

void Form::PropertyChanged(PropertyId property) {
    if (m_loaded) {
        m_screen.FormChanged(*this, property);
    }
}

void Form::TellScreen(Control& control, PropertyId property) {
    if (m_loaded) {
        m_screen.ControlChanged(control, property);
    }
}

void Form::RefreshControl(Control& control) {
    if (m_loaded) {
        m_screen.Repaint(control);
    }
}

}  // namespace krv::forms
