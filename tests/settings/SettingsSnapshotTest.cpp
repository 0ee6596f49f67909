#include "settings/SettingsSnapshot.h"

#include <gtest/gtest.h>

#include "common/MemoryPropertyBag.h"
#include "tests/support/FakeServer.h"
#include "tests/support/ScriptedDesktop.h"

namespace krv::tests {

using namespace settings;
namespace {

constexpr const char* OtherInstrument =
    "[stop] Invalid state: Cannot restore a state from an instrument with a different serial "
    "number than the current instrument. (OK)";

std::string Failed(const std::string& why) {
    return "[stop] Error: State restore operation failed--state has not been restored." + why +
           " (OK)";
}

class SettingsSnapshotTest : public ::testing::Test {
 protected:
    std::shared_ptr<FakeServer> server = FakeServer::Make();
    ScriptedMessageBoxes boxes;

    // The message box shown, and the calls to the instrument.
    std::string Restore(const Value& snapshot) {
        server->Calls.clear();
        boxes.Shown.clear();
        settings::RestoreSettings(*server, snapshot, boxes);
        std::string told;
        for (const auto& box : boxes.Shown) {
            told += box + ';';
        }
        for (const auto& call : server->Calls) {
            told += call + ';';
        }
        return told;
    }
};

Value SnapshotOf(const std::vector<BagEntry>& entries) {
    return ByteArray{EncodeBag(entries)};
}

TEST_F(SettingsSnapshotTest, HoldsTheSerialNumberAndTheStateInThisOrder) {
    server->State = ArrayValue{ElementKind::Integer, {{1, 1}}, {{std::int16_t{7}}}};
    const Value snapshot = settings::CaptureSettings(*server);
    EXPECT_EQ(snapshot, SnapshotOf({{"krSerialNumber", std::string("US00000001")},
                                    {"krStateData", server->State}}));
    EXPECT_EQ(server->Calls, (std::vector<std::string>{"CaptureState", "ReturnToLocal"}));
}

TEST_F(SettingsSnapshotTest, GoesBackToTheInstrumentThatItWasTakenFrom) {
    server->State = ByteArray{{std::byte{1}, std::byte{0}}};
    const Value state = server->State;
    const Value snapshot = settings::CaptureSettings(*server);
    server->State = EmptyValue{};
    EXPECT_EQ(Restore(snapshot), "RestoreState;ReturnToLocal;");
    EXPECT_EQ(server->State, state);

    server->InstrumentNumber = "us00000001";
    EXPECT_EQ(Restore(snapshot), OtherInstrument + std::string(";ReturnToLocal;"));
    server->InstrumentNumber = "US00000001 ";
    EXPECT_EQ(Restore(snapshot), OtherInstrument + std::string(";ReturnToLocal;"));
}

TEST_F(SettingsSnapshotTest, WhatIsNoSnapshotIsRefusedAndNothingIsSent) {
    const std::string number = "US00000001";
    ByteArray cut = std::get<ByteArray>(settings::CaptureSettings(*server));
    cut.bytes.pop_back();
    ByteArray altered = std::get<ByteArray>(settings::CaptureSettings(*server));
    altered.bytes[40] ^= std::byte{1};
    const std::pair<Value, std::string> cases[] = {
        {EmptyValue{}, "Type mismatch"},
        {std::string("krStateData"), "Type mismatch"},
        {ByteArray{}, "These aren't saved properties."},
        {cut, "The saved properties are incomplete."},
        {altered, "The saved properties have been altered: their checksum doesn't fit."},
        {SnapshotOf({}), "The captured state has no entry \"krSerialNumber\"."},
        {SnapshotOf({{"krserialnumber", number}, {"krStateData", true}}),
         "The captured state has no entry \"krSerialNumber\"."},
        {SnapshotOf({{"krSerialNumber", 1.0}, {"krStateData", true}}), "Type mismatch"},
        {SnapshotOf({{"krSerialNumber", number}}),
         "The captured state has no entry \"krStateData\"."},
    };
    for (const auto& [snapshot, why] : cases) {
        EXPECT_EQ(Restore(snapshot), Failed(why) + ";ReturnToLocal;");
    }
}

TEST_F(SettingsSnapshotTest, AFailingServerIsToldOfByTheCallerWhenCapturingAndHereWhenRestoring) {
    const Value snapshot = settings::CaptureSettings(*server);
    for (const std::string failing : {"SerialNumber", "CaptureState"}) {
        server->FailingCall = failing;
        EXPECT_THROW(static_cast<void>(settings::CaptureSettings(*server)), Error);
        EXPECT_EQ(server->Calls.back(), "ReturnToLocal");
    }
    server->FailingCall = "SerialNumber";
    EXPECT_EQ(Restore(snapshot), Failed("Time-out while writing") + ";ReturnToLocal;");
    server->FailingCall = "RestoreState";
    EXPECT_EQ(Restore(snapshot), Failed("Time-out while writing") + ";RestoreState;ReturnToLocal;");
    server->FailingCall = "IO";
    EXPECT_EQ(settings::CaptureSettings(*server), snapshot) << "a captured state isn't lost";
    EXPECT_EQ(Restore(EmptyValue{}), Failed("Type mismatch") + ";");
}

}  // namespace
}  // namespace krv::tests
