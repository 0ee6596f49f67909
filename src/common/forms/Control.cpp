#include "common/forms/Control.h"

#include <utility>

#include "common/Hexadecimal.h"
#include "common/Text.h"
#include "common/forms/Form.h"

namespace krv::forms {
namespace {

bool LooksLikePaper(ControlKind kind) {
    return kind == ControlKind::TextBox || kind == ControlKind::ComboBox ||
           kind == ControlKind::ListView;
}

Color DefaultBackColor(ControlKind kind) {
    return LooksLikePaper(kind) ? SystemColor::WindowBackground : SystemColor::ButtonFace;
}

Color DefaultForeColor(ControlKind kind) {
    return LooksLikePaper(kind) ? SystemColor::WindowText : SystemColor::ButtonText;
}

bool CanHaveFocus(ControlKind kind) {
    switch (kind) {
        case ControlKind::Label:
        case ControlKind::ProgressBar:
        case ControlKind::Frame:
        case ControlKind::Timer:
        case ControlKind::CommonDialog:
            return false;
        default:
            return true;
    }
}

std::string ColorName(Color color) {
    switch (color) {
        case SystemColor::WindowBackground:
            return "white";
        case SystemColor::ButtonFace:
            return "grey";
        case SystemColor::WindowText:
        case SystemColor::ButtonText:
            return "normal";
        default:
            return '#' + Hexadecimal(color, 6);
    }
}

}  // namespace

Control::Control(Form& form, ControlKind kind, std::string name, Control* container, int index)
    : Enabled(*this, PropertyId::Enabled, true),
      Visible(*this, PropertyId::Visible, true),
      TabStop(*this, PropertyId::TabStop, CanHaveFocus(kind)),
      ToolTipText(*this, PropertyId::ToolTipText),
      Place(*this, PropertyId::Place),
      BackColor(*this, PropertyId::BackColor, DefaultBackColor(kind)),
      ForeColor(*this, PropertyId::ForeColor, DefaultForeColor(kind)),
      m_form(form),
      m_kind(kind),
      m_name(std::move(name)),
      m_container(container),
      m_index(index) {
    form.AddControl(*this);
}

Control::~Control() {
    m_form.RemoveControl(*this);
}

bool Control::TakesUserInput() const noexcept {
    for (const Control* control = this; control != nullptr; control = control->m_container) {
        if (!control->Enabled || !control->Visible) {
            return false;
        }
    }
    return true;
}

void Control::LayOut(const krv::forms::Place& place, const std::string& toolTip) {
    Place = place;
    ToolTipText = toolTip;
}

void Control::Refresh() {
    m_form.RefreshControl(*this);
}

void Control::PropertyChanged(PropertyId property) {
    TellScreen(property);
    RaiseEvents(property);
}

void Control::TellScreen(PropertyId property) {
    m_form.TellScreen(*this, property);
}

void Control::RaiseEvents(PropertyId /*property*/) {}

void Control::AppendQuoted(std::string& text, const std::string& value) {
    std::string line = value;
    for (auto at = line.find(CrLf); at != std::string::npos; at = line.find(CrLf, at)) {
        line.replace(at, CrLf.size(), " | ");
    }
    text += '"' + line + '"';
}

std::string Control::StateText() const {
    std::string text = m_name;
    if (m_index != NoIndex) {
        text += '(' + std::to_string(m_index) + ')';
    }
    text += ' ';
    DescribeKind(text);
    if (!Visible) {
        text += " hidden";
    }
    if (!Enabled) {
        text += " disabled";
    }
    if (TabStop != CanHaveFocus(m_kind)) {
        text += TabStop ? " tabstop" : " notab";
    }
    if (BackColor != DefaultBackColor(m_kind)) {
        text += ' ' + ColorName(BackColor);
    }
    if (ForeColor != DefaultForeColor(m_kind)) {
        text += " text:" + ColorName(ForeColor);
    }
    if (!ToolTipText.Get().empty()) {
        text += " tip=";
        AppendQuoted(text, ToolTipText);
    }
    return text;
}

}  // namespace krv::forms
