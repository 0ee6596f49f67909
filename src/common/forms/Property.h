// Property: a value of a control or form that remembers what it holds and notifies its owner when
// it really changed. Writing the value that it already has does nothing.
//
// Used like a plain member: `box.Text = "1"`, `if (box.Enabled)`.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

namespace krv::forms {

enum class PropertyId : std::uint8_t {
    Text,
    Caption,
    Enabled,
    Visible,
    Locked,
    TabStop,
    ToolTipText,
    ForeColor,
    BackColor,
    Items,
    ListIndex,
    Value,
    Min,
    Max,
    Interval,
    Place,
};

// What holds properties: a control or a form.
class PropertyOwner {
 public:
    // Called after the property has taken its new value. Events are raised from here.
    virtual void PropertyChanged(PropertyId property) = 0;
    // Called before; throws Error 380 to refuse the value that the number stands for.
    virtual void CheckNumber(PropertyId /*property*/, double /*value*/) const {}

 protected:
    ~PropertyOwner() = default;
};

template <class T>
class Property {
 public:
    Property(PropertyOwner& owner, PropertyId id, T initial = T())
        : m_owner(owner), m_id(id), m_value(std::move(initial)) {}
    Property(const Property&) = delete;
    Property& operator=(const Property& other) { return *this = other.m_value; }

    Property& operator=(T value) {
        if constexpr (std::is_arithmetic_v<T>) {
            m_owner.CheckNumber(m_id, static_cast<double>(value));
        }
        if (!(m_value == value)) {
            m_value = std::move(value);
            m_owner.PropertyChanged(m_id);
        }
        return *this;
    }

    operator const T&() const noexcept { return m_value; }  // NOLINT: reads like a plain member
    [[nodiscard]] const T& Get() const noexcept { return m_value; }

    // Sets the value without notifying the owner: where one write changes several properties and
    // the owner reports them itself.
    void Preset(T value) { m_value = std::move(value); }

 private:
    PropertyOwner& m_owner;
    const PropertyId m_id;
    T m_value;
};

}  // namespace krv::forms
