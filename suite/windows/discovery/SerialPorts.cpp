#include "suite/windows/discovery/SerialPorts.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "windows/base/Handles.h"
#include "windows/base/WideText.h"

namespace krv::suite {
namespace {

// Where drivers note the ports that they serve, as values of any name.
constexpr const wchar_t* PortsKey = L"HARDWARE\\DEVICEMAP\\SERIALCOMM";

bool IsBefore(const std::string& one, const std::string& other) {
    return one.size() != other.size() ? one.size() < other.size() : one < other;
}

}  // namespace

std::vector<std::string> SerialPorts() {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, PortsKey, 0, KEY_READ, &opened) != ERROR_SUCCESS) {
        return {};
    }
    const windows::RegistryHandle key(opened);
    std::vector<std::string> ports;
    for (DWORD index = 0;; ++index) {
        std::array<wchar_t, 256> driver{};
        std::array<wchar_t, 64> port{};
        DWORD driverLength = driver.size();
        // A NUL at the end stays, whatever is written.
        DWORD portBytes = (port.size() - 1) * sizeof(wchar_t);
        const LSTATUS status =
            RegEnumValueW(key.get(), index, driver.data(), &driverLength, nullptr, nullptr,
                          reinterpret_cast<BYTE*>(port.data()), &portBytes);
        if (status == ERROR_MORE_DATA) {
            continue;
        }
        if (status != ERROR_SUCCESS) {
            break;
        }
        ports.push_back(windows::ToUtf8(port.data()));
    }
    std::sort(ports.begin(), ports.end(), IsBefore);
    return ports;
}

}  // namespace krv::suite
