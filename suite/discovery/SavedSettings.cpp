#include "suite/discovery/SavedSettings.h"

#include <array>

#include "common/Error.h"
#include "common/Text.h"
#include "suite/transport/Transport.h"

namespace krv::suite {
namespace {

// The names begin alike, since other objects keep entries in the same bag.
namespace Key {
constexpr const char* Version = "ioVersion";
constexpr const char* InstrumentType = "ioInstrumentType";
constexpr const char* HostName = "ioHostName";
constexpr const char* ModelCount = "ioModelCount";
constexpr const char* SerialCount = "ioSerialCount";
constexpr const char* Address = "ioAddress";
}  // namespace Key

constexpr std::int32_t SettingsVersion = 1;
constexpr std::int32_t MostModels = 100;
constexpr std::int32_t MostConfigurations = 16;
constexpr std::size_t LongestText = 255;

struct SerialSetting {
    const char* name;
    std::int32_t SavedSettings::Serial::*value;
    std::int32_t lowest;
    std::int32_t highest;
};

constexpr std::array SerialSettings{
    SerialSetting{"Port", &SavedSettings::Serial::port, 0, 256},
    SerialSetting{"BaudRate", &SavedSettings::Serial::baudRate, 1, 10000000},
    SerialSetting{"DataBits", &SavedSettings::Serial::dataBits, 4, 8},
    SerialSetting{"Handshake", &SavedSettings::Serial::handshake, 0, 255}};

[[noreturn]] void Refuse(const std::string& name) {
    throw Error(ErrorNumber::InvalidPropertyValue,
                "The saved connection settings can't be used: the value of \"" + name +
                    "\" is not a possible one.");
}

void Check(bool isPossible, const std::string& name) {
    if (!isPossible) {
        Refuse(name);
    }
}

void CheckText(const std::string& text, const std::string& name) {
    Check(text.size() <= LongestText && !HasControlCharacters(text), name);
}

// Each part of an item has an entry of its own, e.g. "ioSerial2BaudRate", counted from 1.
std::string ItemKey(const char* list, std::size_t index, const char* part) {
    return list + std::to_string(index + 1) + part;
}

std::string ReadItemText(PropertyBag& bag, const std::string& name) {
    std::string text = bag.ReadText(name, "");
    CheckText(text, name);
    return text;
}

std::size_t ReadCount(PropertyBag& bag, const char* name, std::int32_t most) {
    const std::int32_t count = bag.ReadLong(name, 0);
    Check(count >= 0 && count <= most, name);
    return static_cast<std::size_t>(count);
}

SavedSettings::Serial ReadSerial(PropertyBag& bag, std::size_t index) {
    SavedSettings::Serial serial;
    serial.key = ReadItemText(bag, ItemKey("ioSerial", index, "Key"));
    for (const SerialSetting& setting : SerialSettings) {
        const std::string name = ItemKey("ioSerial", index, setting.name);
        const std::int32_t value = bag.ReadLong(name, serial.*setting.value);
        Check(value >= setting.lowest && value <= setting.highest, name);
        serial.*setting.value = value;
    }
    return serial;
}

void CheckAll(const SavedSettings& settings) {
    CheckText(settings.instrumentType, Key::InstrumentType);
    CheckText(settings.hostName, Key::HostName);
    Check(settings.address.empty() || IsUsableAddress(settings.address), Key::Address);
    Check(settings.supportedModels.size() <= MostModels, Key::ModelCount);
    Check(settings.serialConfigurations.size() <= MostConfigurations, Key::SerialCount);
}

}  // namespace

std::string AddressOf(const std::string& port, const SavedSettings::Serial& line) {
    constexpr std::int32_t ByHardware = 2;
    return "serial://" + port + "?baud=" + std::to_string(line.baudRate) +
           "&data=" + std::to_string(line.dataBits) +
           ((line.handshake & ByHardware) != 0 ? "&flow=hardware" : "");
}

void WriteSettings(const SavedSettings& settings, PropertyBag& bag) {
    CheckAll(settings);
    bag.Write(Key::Version, SettingsVersion);
    bag.Write(Key::InstrumentType, settings.instrumentType);
    bag.Write(Key::HostName, settings.hostName);
    bag.Write(Key::ModelCount, static_cast<std::int32_t>(settings.supportedModels.size()));
    for (std::size_t index = 0; index < settings.supportedModels.size(); ++index) {
        const SavedSettings::Model& model = settings.supportedModels[index];
        CheckText(model.key, ItemKey("ioModel", index, "Key"));
        CheckText(model.name, ItemKey("ioModel", index, "Name"));
        bag.Write(ItemKey("ioModel", index, "Key"), model.key);
        bag.Write(ItemKey("ioModel", index, "Name"), model.name);
    }
    bag.Write(Key::SerialCount, static_cast<std::int32_t>(settings.serialConfigurations.size()));
    for (std::size_t index = 0; index < settings.serialConfigurations.size(); ++index) {
        const SavedSettings::Serial& serial = settings.serialConfigurations[index];
        CheckText(serial.key, ItemKey("ioSerial", index, "Key"));
        bag.Write(ItemKey("ioSerial", index, "Key"), serial.key);
        for (const SerialSetting& setting : SerialSettings) {
            bag.Write(ItemKey("ioSerial", index, setting.name), serial.*setting.value);
        }
    }
    bag.Write(Key::Address, settings.address);
}

SavedSettings ReadSettings(PropertyBag& bag) {
    SavedSettings settings;
    Check(bag.ReadLong(Key::Version, SettingsVersion) == SettingsVersion, Key::Version);
    settings.instrumentType = bag.ReadText(Key::InstrumentType, settings.instrumentType);
    settings.hostName = bag.ReadText(Key::HostName, settings.hostName);
    settings.supportedModels.resize(ReadCount(bag, Key::ModelCount, MostModels));
    for (std::size_t index = 0; index < settings.supportedModels.size(); ++index) {
        settings.supportedModels[index] = {ReadItemText(bag, ItemKey("ioModel", index, "Key")),
                                           ReadItemText(bag, ItemKey("ioModel", index, "Name"))};
    }
    const std::size_t configurations = ReadCount(bag, Key::SerialCount, MostConfigurations);
    for (std::size_t index = 0; index < configurations; ++index) {
        settings.serialConfigurations.push_back(ReadSerial(bag, index));
    }
    settings.address = bag.ReadText(Key::Address, "");
    CheckAll(settings);
    return settings;
}

}  // namespace krv::suite
