// A client that somebody else wrote: what is piped into nc goes over a plain socket, and what comes
// back is all that it prints.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {

using namespace simulator;
namespace {

class NetcatTest : public ::testing::Test {
 protected:
    void SetUp() override {
        if (std::system("nc -h 2>&1 | grep -q -- -N") != 0) {
            GTEST_SKIP() << "no nc that ends its side when its input ends";
        }
    }

    // What nc prints until the generator, too, has ended the connection.
    std::string Pipe(const RunningGenerator& generator, const std::string& input) {
        const auto file = folder.Path() / "input";
        std::ofstream(file, std::ios::binary) << input;
        return Run("nc -N -w 5 127.0.0.1 " + std::to_string(generator.Port()) + " <" +
                   file.string());
    }

    TemporaryFolder folder;

 private:
    static std::string Run(const std::string& command) {
        const std::unique_ptr<std::FILE, std::function<void(std::FILE*)>> output(
            ::popen(command.c_str(), "r"), [](std::FILE* stream) { ::pclose(stream); });
        std::string printed;
        std::array<char, 4096> buffer{};
        while (const std::size_t count =
                   std::fread(buffer.data(), 1, buffer.size(), output.get())) {
            printed.append(buffer.data(), count);
        }
        return printed;
    }
};

TEST_F(NetcatTest, AsksInLinesOfAnyKind) {
    const RunningGenerator generator;
    EXPECT_EQ(Pipe(generator,
                   "*IDN?\n*OPT?\r\n\r\n  *OPC? ; *TST?\nSYST:ERR?;:syst:err:coun?\nBAD;*OPC?\n"
                   "SYSTEM:ERROR:NEXT?\r\n*IDN?"),
              "Corvane,M7718C,US00000001,B.03.40\nR2X\n1;0\n0,\"No error\";0\n"
              "-113,\"Undefined header;BAD\"\n");
}

TEST_F(NetcatTest, SendsBlocksBetweenQueriesAndReadsThemBack) {
    const RunningGenerator generator({.memoryPoints = 70'000, .storeFolder = folder.Path()});
    // Every byte there is, among them what ends lines, strings and messages.
    std::string bytes;
    for (int index = 0; index < 1 << 17; ++index) {
        bytes += static_cast<char>(index);
    }
    const std::string block = "#6131072" + bytes;
    EXPECT_EQ(Pipe(generator, "*OPC?;ARB:DATA:INT \"all\"," + block + ";*OPC?\r\nARB:SIZE? all\n" +
                                  "ARB:DATA:IQ large," + block + ',' + block + "\nSYST:ERR?\n" +
                                  "ARB:DATA:IQ more,#6150000" + bytes + std::string(18928, '\n') +
                                  ";*OPC?\nSYST:ERR:ALL?\n"),
              "1;1\n65536,0,0\n-225,\"Out of memory\"\n1\n-225,\"Out of memory\"\n");
    const std::string stored = folder.Content("all.iq.int16");
    ASSERT_EQ(stored.size(), bytes.size());
    EXPECT_EQ(stored.substr(0, 6), std::string("\x01\x00\x03\x02\x05\x04", 6));
    const std::string screen = Pipe(generator, "HCOP;:MMEM:DATA? 'DISPLAY.BMP';*OPC?\n");
    const std::string start = screen.substr(0, 8);
    ASSERT_EQ(start.substr(0, 2), "#6");
    EXPECT_EQ(screen.size(), 8 + std::stoul(start.substr(2)) + std::string(";1\n").size());
    EXPECT_EQ(screen.substr(8, 2), "BM");
}

TEST_F(NetcatTest, SpoilsTheGeneratorAndMendsIt) {
    const RunningGenerator generator;
    EXPECT_EQ(Pipe(generator, "DIAG:FAUL 'truncate-reply'\n*IDN?\nDIAG:FAUL:CLE\n*OPC?\n"),
              "Corvane,M7718C,US1\n");
    EXPECT_EQ(Pipe(generator, "DIAG:FAUL 'disconnect=8'\n"), "");
    EXPECT_EQ(Pipe(generator, "*OPC?\n*OPC?\n"), "");
    EXPECT_EQ(Pipe(generator, "*OPC?\n*OPC?\n"), "1\n1\n");
    EXPECT_EQ(Pipe(generator, "DIAG:FAUL 'never-answer'\n*OPC?\nDIAG:FAUL:CLE\nDIAG:FAUL?\n"),
              "\"\"\n");
}

}  // namespace
}  // namespace krv::tests
