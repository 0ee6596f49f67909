#include "settings/SettingsSnapshot.h"

#include "common/Error.h"
#include "common/ErrorTrap.h"
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
    // What was captured before counts, also when the instrument can't be reached any more.
    const ScopeExit leave([&] { hosts::ReturnInstrumentToLocal(server); });
    MemoryPropertyBag bag;
    bag.Write(SerialNumberKey, server.Instrument()->SerialNumber());
    bag.Write(StateKey, server.Instrument()->CaptureState());
    return ByteArray{bag.Contents()};
}

void RestoreSettings(ports::InstrumentServer& server, const Value& snapshot,
                     ports::MessageBoxes& messageBoxes) {
    const ScopeExit leave([&] { hosts::ReturnInstrumentToLocal(server); });
    const auto failure = FailureOf([&] { Restore(server, snapshot, messageBoxes); });
    if (failure) {
        messageBoxes.Show({"State restore operation failed--state has not been restored." +
                               failure->Description(),
                           "Error", ports::MessageIcon::Critical, ports::MessageButtons::Ok});
    }
}

}  // namespace krv::settings
