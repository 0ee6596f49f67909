// A system without a registry.
#include <sys/utsname.h>

#include <filesystem>
#include <system_error>

#include "common/Error.h"
#include "doctor/InstalledSystem.h"

namespace krv::doctor {
namespace {

class PosixSystem final : public InstalledSystem {
 public:
    [[nodiscard]] std::string Name() const override {
        utsname name{};
        return uname(&name) == 0
                   ? std::string(name.sysname) + ' ' + name.release + ", " + name.machine
                   : "unknown";
    }
    [[nodiscard]] std::string ProgramFile() const override {
        std::error_code unknown;
        return std::filesystem::read_symlink("/proc/self/exe", unknown).string();
    }
    [[nodiscard]] std::string AddInLog() const override { return {}; }
    [[nodiscard]] int OwnWordSize() const override { return static_cast<int>(8 * sizeof(void*)); }
    [[nodiscard]] std::vector<int> WordSizes() const override { return {}; }
    [[nodiscard]] std::optional<std::string> Text(const RegistryKey& /*key*/,
                                                  const std::string& /*name*/) const override {
        return std::nullopt;
    }
    [[nodiscard]] std::optional<std::uint32_t> Number(const RegistryKey& /*key*/,
                                                      const std::string& /*name*/) const override {
        return std::nullopt;
    }
    [[nodiscard]] std::vector<RegistryValue> Values(const RegistryKey& /*key*/) const override {
        return {};
    }
    [[nodiscard]] std::optional<ProgramFacts> Facts(const std::string& /*file*/) const override {
        return std::nullopt;
    }
    [[nodiscard]] std::string LoadFault(const std::string& /*file*/) const override { return {}; }

    void SetNumber(const RegistryKey& /*key*/, const std::string& /*name*/,
                   std::uint32_t /*value*/) override {
        throw Error(ErrorNumber::ActionNotSupported);
    }
    void DeleteValue(const RegistryKey& /*key*/, const std::string& /*name*/) override {
        throw Error(ErrorNumber::ActionNotSupported);
    }
    void Register(const std::string& /*file*/, int /*wordSize*/, Scope /*scope*/) override {
        throw Error(ErrorNumber::ActionNotSupported);
    }
};

}  // namespace

std::unique_ptr<InstalledSystem> ThisSystem() {
    return std::make_unique<PosixSystem>();
}

}  // namespace krv::doctor
