#include "suite/states/StateList.h"

#include <algorithm>

#include "common/BagContents.h"
#include "common/Error.h"
#include "common/Text.h"

namespace krv::suite {
namespace {

constexpr std::int32_t NameTaken = 457;
// One entry of the document's bag holds them all, so that they are read whole or not at all.
constexpr const char* StatesKey = "instrSetupStates";
constexpr const char* VersionKey = "version";
constexpr std::int32_t StatesVersion = 1;

bool IsControlCharacter(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

bool HasName(const NamedState& state, const std::string& name) {
    return EqualIgnoringCase(state.name, name);
}

Value Packed(const NamedState& state) {
    return ArrayValue{
        ElementKind::Any,
        {{5, 0}},
        {{state.name}, {state.captured}, {state.model}, {state.version}, {state.snapshot}}};
}

ByteArray PackedStates(const std::vector<NamedState>& states) {
    std::vector<BagEntry> entries{{VersionKey, StatesVersion}};
    for (std::size_t index = 0; index < states.size(); ++index) {
        entries.emplace_back(std::to_string(index + 1), Packed(states[index]));
    }
    return {EncodeBag(entries)};
}

Error Damaged() {
    return Error(ErrorNumber::InvalidFileFormat, "The saved states are damaged.");
}

template <class Kind>
const Kind& Part(const ArrayValue& array, std::size_t index) {
    const auto* part = std::get_if<Kind>(&array.elements[index].value);
    if (part == nullptr) {
        throw Damaged();
    }
    return *part;
}

NamedState Unpacked(const Value& packed) {
    const auto* array = std::get_if<ArrayValue>(&packed);
    if (array == nullptr || array->elements.size() != 5) {
        throw Damaged();
    }
    return {Part<std::string>(*array, 0), Part<DateValue>(*array, 1), Part<std::string>(*array, 2),
            Part<std::string>(*array, 3), array->elements[4].value};
}

void RequireVersion(const std::vector<BagEntry>& entries) {
    if (entries.empty() || entries[0].first != VersionKey) {
        throw Damaged();
    }
    if (entries[0].second != Value(StatesVersion)) {
        throw Error(ErrorNumber::InvalidFileFormat,
                    "The saved states are of a version that isn't known.");
    }
}

std::string WellFormedName(const std::string& name) {
    std::string valid(TrimBlanks(name));
    if (valid.empty()) {
        throw Error(ErrorNumber::InvalidPropertyValue, "Enter a name for the state.");
    }
    if (CharacterCount(valid) > StateList::MaxNameLength) {
        throw Error(ErrorNumber::InvalidPropertyValue,
                    "The name of a state can have at most " +
                        std::to_string(StateList::MaxNameLength) + " characters.");
    }
    if (std::any_of(valid.begin(), valid.end(), IsControlCharacter)) {
        throw Error(ErrorNumber::InvalidPropertyValue,
                    "The name of a state can't hold control characters.");
    }
    return valid;
}

// Sorts instead of comparing each with each: no choice of names makes this slow.
bool HasNameTwice(const std::vector<NamedState>& states) {
    std::vector<std::string> names;
    for (const NamedState& state : states) {
        names.push_back(UpperCase(state.name));
    }
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

}  // namespace

const NamedState& StateList::At(std::size_t index) const {
    if (index >= m_states.size()) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    return m_states[index];
}

std::string StateList::FreeName() const {
    for (std::size_t number = 1;; ++number) {
        const std::string name = "State " + std::to_string(number);
        const bool isTaken = std::any_of(m_states.begin(), m_states.end(),
                                         [&](const auto& state) { return HasName(state, name); });
        if (!isTaken) {
            return name;
        }
    }
}

std::string StateList::ValidName(const std::string& name) const {
    std::string valid = WellFormedName(name);
    for (const NamedState& state : m_states) {
        if (HasName(state, valid)) {
            throw Error(NameTaken, "There is already a state named \"" + state.name + "\".");
        }
    }
    return valid;
}

void StateList::Add(NamedState state) {
    if (m_states.size() >= MaxStates) {
        throw Error(ErrorNumber::OutOfMemory,
                    "There are " + std::to_string(MaxStates) +
                        " captured states already.  Delete one that is no longer needed.");
    }
    state.name = ValidName(state.name);
    std::vector<NamedState> states = m_states;
    states.push_back(std::move(state));
    static_cast<void>(PackedStates(states));
    m_states = std::move(states);
}

void StateList::Rename(std::size_t index, const std::string& name) {
    static_cast<void>(At(index));
    StateList others = *this;
    others.Delete(index);
    m_states[index].name = others.ValidName(name);
}

void StateList::Delete(std::size_t index) {
    static_cast<void>(At(index));
    m_states.erase(m_states.begin() + static_cast<std::ptrdiff_t>(index));
}

void StateList::Write(PropertyBag& bag) const {
    bag.Write(StatesKey, PackedStates(m_states));
}

void StateList::Read(PropertyBag& bag) {
    const auto found = bag.Find(StatesKey);
    const auto* packed = found ? std::get_if<ByteArray>(&*found) : nullptr;
    if (packed == nullptr) {
        throw Damaged();
    }
    const std::vector<BagEntry> entries = DecodeBag(packed->bytes);
    RequireVersion(entries);
    if (entries.size() > MaxStates + 1) {
        throw Damaged();
    }
    std::vector<NamedState> states;
    for (std::size_t index = 1; index < entries.size(); ++index) {
        NamedState state = Unpacked(entries[index].second);
        if (entries[index].first != std::to_string(index) ||
            WellFormedName(state.name) != state.name) {
            throw Damaged();
        }
        states.push_back(std::move(state));
    }
    if (HasNameTwice(states)) {
        throw Damaged();
    }
    m_states = std::move(states);
}

}  // namespace krv::suite
