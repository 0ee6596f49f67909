#include "bench/shared/CommandBarModel.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

std::string Plain(std::string_view caption) {
    std::string plain(caption);
    plain.erase(std::remove(plain.begin(), plain.end(), '&'), plain.end());
    return UpperCase(plain);
}

Error NoSuchControl() {
    return Error(ErrorNumber::InvalidCall);
}

}  // namespace

CommandBarModel::CommandBarModel(std::string name, const std::vector<std::string>& captions,
                                 std::function<void()> listener)
    : m_name(std::move(name)), m_listener(std::move(listener)) {
    for (const std::string& caption : captions) {
        m_buttons.push_back({caption, caption, true, true});
    }
}

const CommandBarButton& CommandBarModel::At(std::int32_t position) const {
    if (position < 1 || position > Count()) {
        throw NoSuchControl();
    }
    return m_buttons[static_cast<std::size_t>(position - 1)];
}

void CommandBarModel::Set(std::int32_t position, const CommandBarButton& button) {
    if (At(position) == button) {
        return;
    }
    m_buttons[static_cast<std::size_t>(position - 1)] = button;
    m_listener();
}

std::int32_t CommandBarModel::PositionOf(std::string_view caption) const {
    const auto found = std::find_if(
        m_buttons.begin(), m_buttons.end(),
        [wanted = Plain(caption)](const auto& button) { return Plain(button.caption) == wanted; });
    if (found == m_buttons.end()) {
        throw NoSuchControl();
    }
    return static_cast<std::int32_t>(found - m_buttons.begin()) + 1;
}

}  // namespace krv::bench
