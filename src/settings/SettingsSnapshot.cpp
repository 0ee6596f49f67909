#include "settings/SettingsSnapshot.h"

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"
#include "common/ScopeExit.h"
#include "hosts/OfficeProcedures.h"

namespace krv::settings {
namespace {

constexpr const char* SerialNumberKey = "krSerialNumber";
constexpr const char* StateKey = "krStateData";

Value Required(MemoryPropertyBag& bag, const char* key) {
    if (auto value = bag.Find(key)) {
        return std::move(*value);
    }
    throw Error(ErrorNumber::InvalidFileFormat,
                std::string("The captured state has no entry \"") + key + "\".");
}

MemoryPropertyBag BagOf(const Value& snapshot) {
    const auto* contents = std::get_if<ByteArray>(&snapshot);
    if (contents == nullptr) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    MemoryPropertyBag bag;
    bag.SetContents(contents->bytes);
    return bag;
}

// What was captured or told before counts: that the instrument can't be reached any more doesn't
// undo it.
void ReturnInstrumentToLocal(ports::InstrumentServer& server) {
    try {
        hosts::ReturnToLocal(server.Instrument()->IO());
    } catch (const Error&) {
        return;
    }
}

void Restore(ports::InstrumentServer& server, const Value& snapshot,
             ports::MessageBoxes& messageBoxes) {
    MemoryPropertyBag bag = BagOf(snapshot);
    const Value serialNumber = Required(bag, SerialNumberKey);
    const auto* text = std::get_if<std::string>(&serialNumber);
    if (text == nullptr) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    if (*text != server.Instrument()->SerialNumber()) {
        messageBoxes.Show(
            {"Cannot restore a state from an instrument with a different serial "
             "number than the current instrument.",
             "Invalid state", ports::MessageIcon::Critical, ports::MessageButtons::Ok});
        return;
    }
    server.Instrument()->RestoreState(Required(bag, StateKey));
}

}  // namespace

Value CaptureSettings(ports::InstrumentServer& server) {
    const ScopeExit returned([&] { ReturnInstrumentToLocal(server); });
    MemoryPropertyBag bag;
    bag.Write(SerialNumberKey, server.Instrument()->SerialNumber());
    bag.Write(StateKey, server.Instrument()->CaptureState());
    return ByteArray{bag.Contents()};
}

void RestoreSettings(ports::InstrumentServer& server, const Value& snapshot,
                     ports::MessageBoxes& messageBoxes) {
    try {
        Restore(server, snapshot, messageBoxes);
    } catch (const Error& error) {
        messageBoxes.Show(
            {"State restore operation failed--state has not been restored." + error.Description(),
             "Error", ports::MessageIcon::Critical, ports::MessageButtons::Ok});
        ReturnInstrumentToLocal(server);
    }
}

}  // namespace krv::settings
