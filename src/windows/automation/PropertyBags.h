// Property bags across automation: a container's bag as the core sees it, a bag of the core's as
// components see it, and components that keep themselves in one. The apartment's thread.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <wrl/client.h>

#include <optional>
#include <string>

#include "common/PropertyBag.h"

namespace krv::windows {

// A container's bag. It reads an entry that it reports as missing, or as empty, as no entry.
class ForeignPropertyBag final : public PropertyBag {
 public:
    // Both outlive this. The bag writes what can't be read to the log, which may be null.
    explicit ForeignPropertyBag(IPropertyBag& bag, IErrorLog* log = nullptr)
        : m_bag(bag), m_log(log) {}

    // Throws Error 13 for an entry that is an object.
    std::optional<Value> Find(const std::string& name) override;
    void Write(const std::string& name, const Value& value) override;

 private:
    IPropertyBag& m_bag;
    IErrorLog* m_log;
};

// Lends a bag to others as an object, for as long as this lives: a reference that is kept longer
// leads to nothing. What others write comes back to them exactly as it was.
class LentPropertyBag {
 public:
    explicit LentPropertyBag(PropertyBag& bag);
    LentPropertyBag(const LentPropertyBag&) = delete;
    LentPropertyBag& operator=(const LentPropertyBag&) = delete;
    ~LentPropertyBag();

    [[nodiscard]] IPropertyBag* Object() const;

 private:
    class BagObject;
    Microsoft::WRL::ComPtr<BagObject> m_object;
};

// Has an object write its entries into the bag, or read them from it, by IPersistPropertyBag. Each
// throws Error 445 when the object has no such interface, and else with its description.
void SaveObject(IUnknown* object, PropertyBag& bag);
void LoadObject(IUnknown* object, PropertyBag& bag);

}  // namespace krv::windows
