// Defaults: what a user has settled for all command lines. An option of the command line counts
// more than the environment, and that more than the configuration file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krv::cli {

// What surrounds the program. Without a value: not set.
struct Environment {
    std::optional<std::string> address;
    std::optional<std::string> visaLibrary;
    bool hasNoColor = false;
    // Need not exist; empty where there is no place for it.
    std::string configFile;
    // The folder that the running program lies in; empty where the system doesn't tell.
    std::string programFolder;
};

namespace DefaultName {
inline constexpr std::string_view Address = "address";
inline constexpr std::string_view Color = "color";
inline constexpr std::string_view Quiet = "quiet";
inline constexpr std::string_view Visa = "visa";
}  // namespace DefaultName

[[nodiscard]] std::vector<std::string> DefaultNames();

struct DefaultValue {
    std::string_view name;
    // Empty where nothing holds.
    std::string value;
    // Where the value comes from.
    std::string origin;
};

class Defaults {
 public:
    // Throws Error, which names the line, for a configuration file that can't be used.
    explicit Defaults(const Environment& environment);

    [[nodiscard]] const std::string& Value(std::string_view name) const;
    // In a fixed order.
    [[nodiscard]] const std::vector<DefaultValue>& All() const noexcept { return m_values; }

 private:
    void Take(std::string_view name, const std::string& value, const std::string& origin);
    void ReadFile(const std::string& file);

    std::vector<DefaultValue> m_values;
};

// Change the configuration file; its other lines stay. Each throws UsageError for a name or a value
// that there isn't, and Error when the file can't be written.
void SetDefault(const Environment& environment, const std::string& name, const std::string& value);
// False where the file doesn't set it.
[[nodiscard]] bool UnsetDefault(const Environment& environment, const std::string& name);

}  // namespace krv::cli
