#include "common/forms/Timer.h"

#include <utility>

#include "common/Error.h"
#include "common/forms/Form.h"

namespace krv::forms {

Timer::Timer(Form& form, std::string name)
    : Control(form, ControlKind::Timer, std::move(name), nullptr, NoIndex) {}

void Timer::SetInterval(int milliseconds) {
    if (milliseconds < 0) {
        throw Error(ErrorNumber::InvalidPropertyValue);
    }
    m_interval = milliseconds;
    PropertyChanged(PropertyId::Interval);
}

void Timer::SetTimerEnabled(bool enabled) {
    m_enabled = enabled;
    PropertyChanged(PropertyId::Enabled);
}

bool Timer::UserWaited(ports::UserInput /*input*/) {
    if (!Running() || !Owner().IsLoaded()) {
        return false;
    }
    Raise(OnTimer);
    return true;
}

void Timer::DescribeKind(std::string& text) const {
    text += Running() ? "every " + std::to_string(m_interval) + " ms" : std::string("stopped");
}

}  // namespace krv::forms
