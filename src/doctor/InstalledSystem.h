// InstalledSystem: the port behind which a checkup sees the computer that the product is installed
// on. One thread's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace krv::doctor {

enum class Scope : std::uint8_t { User, Machine };

// In the registry, as a program of the system's own word size sees it.
struct RegistryKey {
    Scope scope;
    std::string path;
};

struct RegistryValue {
    std::string name;
    std::vector<std::byte> bytes;
};

// Of a program or a library.
struct ProgramFacts {
    // 32 or 64; 0 where the file is no program.
    int bits = 0;
    // Empty where the file doesn't tell.
    std::string version;
};

class InstalledSystem {
 public:
    InstalledSystem() = default;
    virtual ~InstalledSystem() = default;
    InstalledSystem(const InstalledSystem&) = delete;
    InstalledSystem& operator=(const InstalledSystem&) = delete;

    // Its name and version.
    [[nodiscard]] virtual std::string Name() const = 0;
    // The file of the program that asks.
    [[nodiscard]] virtual std::string ProgramFile() const = 0;
    // The file in which the add-in tells why it couldn't be loaded; it need not exist. Empty where
    // there is no add-in.
    [[nodiscard]] virtual std::string AddInLog() const = 0;
    // Of the program that asks.
    [[nodiscard]] virtual int OwnWordSize() const = 0;
    // Those that the system has programs for, the largest first; none on a system without a
    // registry.
    [[nodiscard]] virtual std::vector<int> WordSizes() const = 0;

    // Nothing where the key or the value isn't there. An empty name is the key's default value.
    [[nodiscard]] virtual std::optional<std::string> Text(const RegistryKey& key,
                                                          const std::string& name) const = 0;
    [[nodiscard]] virtual std::optional<std::uint32_t> Number(const RegistryKey& key,
                                                              const std::string& name) const = 0;
    [[nodiscard]] virtual std::vector<RegistryValue> Values(const RegistryKey& key) const = 0;

    // Nothing where there is no such file.
    [[nodiscard]] virtual std::optional<ProgramFacts> Facts(const std::string& file) const = 0;
    // Why a library of the program's own word size can't be loaded; empty for one that can.
    [[nodiscard]] virtual std::string LoadFault(const std::string& file) const = 0;

    // Each throws Error.
    virtual void SetNumber(const RegistryKey& key, const std::string& name,
                           std::uint32_t value) = 0;
    virtual void DeleteValue(const RegistryKey& key, const std::string& name) = 0;
    // Has the system's own tool of this word size register the library.
    virtual void Register(const std::string& file, int wordSize, Scope scope) = 0;
};

// Of the computer that the program runs on.
[[nodiscard]] std::unique_ptr<InstalledSystem> ThisSystem();

}  // namespace krv::doctor
