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
        m_buttons.push_back({{.caption = caption, .tooltipText = caption}});
    }
}

void CommandBarModel::Show(bool isShown) {
    if (std::exchange(m_isVisible, isShown) != isShown) {
        m_listener();
    }
}

CommandBarModel::Entry& CommandBarModel::EntryAt(std::int32_t position) {
    if (position < 1 || position > Count()) {
        throw NoSuchControl();
    }
    return m_buttons[static_cast<std::size_t>(position - 1)];
}

const CommandBarButton& CommandBarModel::At(std::int32_t position) const {
    return const_cast<CommandBarModel*>(this)->EntryAt(position).button;
}

void CommandBarModel::Set(std::int32_t position, const CommandBarButton& button) {
    CommandBarButton& present = EntryAt(position).button;
    if (present != button) {
        present = button;
        m_listener();
    }
}

void CommandBarModel::Add(CommandBarButton button) {
    m_buttons.push_back({std::move(button)});
    m_listener();
}

std::int32_t CommandBarModel::AddClickListener(std::int32_t position,
                                               std::function<void()> listener) {
    EntryAt(position).listeners.emplace(++m_lastListener, std::move(listener));
    return m_lastListener;
}

void CommandBarModel::RemoveClickListener(std::int32_t position, std::int32_t number) {
    EntryAt(position).listeners.erase(number);
}

// Listeners may come and go meanwhile.
bool CommandBarModel::Click(std::int32_t position) {
    const ClickListeners listeners = EntryAt(position).listeners;
    for (const auto& [number, listener] : listeners) {
        listener();
    }
    return !listeners.empty();
}

std::int32_t CommandBarModel::PositionOf(std::string_view caption) const {
    const auto found = std::find_if(m_buttons.begin(), m_buttons.end(),
                                    [wanted = Plain(caption)](const auto& entry) {
                                        return Plain(entry.button.caption) == wanted;
                                    });
    if (found == m_buttons.end()) {
        throw NoSuchControl();
    }
    return static_cast<std::int32_t>(found - m_buttons.begin()) + 1;
}

}  // namespace krv::bench
