// The document of the instrument's commands and the tables that the instrument works from say the
// same.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "simulator/commands/CommandTable.h"
#include "suite/scpi/SupportedModels.h"

namespace krv::tests {
namespace {

using namespace simulator;

using Lines = std::vector<std::string>;

Lines ReadDocument() {
    std::ifstream file(std::string(KRV_SOURCE_DIR) + "/docs/instrument-commands.md");
    Lines lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

// The first cells of a table's rows below a heading, as they stand between back quotes.
Lines TableKeys(const Lines& document, const std::string& heading) {
    Lines keys;
    bool inside = false;
    for (const std::string& line : document) {
        if (line.starts_with("#")) {
            inside = line == heading;
        } else if (inside && line.starts_with("| `")) {
            keys.push_back(line.substr(3, line.find('`', 3) - 3));
        }
    }
    return keys;
}

TEST(InstrumentCommandsDocument, ListsTheCommandsOfEachClause) {
    Lines expected;
    for (const CommandClause& clause : CommandTable()) {
        expected.push_back("## " + std::string(clause.title));
        for (const Command& command : clause.commands) {
            expected.push_back("### `" + CommandSyntax(command) + '`');
        }
    }
    Lines found;
    bool inCommands = false;
    for (const std::string& line : ReadDocument()) {
        if (line.starts_with("## ")) {
            inCommands = line.find("comm") != std::string::npos ||
                         line.find("subsystem") != std::string::npos;
        }
        if (inCommands && line.starts_with("##")) {
            found.push_back(line);
        }
    }
    EXPECT_EQ(found, expected);
}

TEST(InstrumentCommandsDocument, ListsErrorsFaultsAndModels) {
    const Lines document = ReadDocument();
    Lines errors;
    for (const ScpiErrorEntry& entry : ScpiErrorTable()) {
        errors.push_back(std::to_string(static_cast<int>(entry.error)) + ",\"" +
                         std::string(entry.text) + '"');
    }
    EXPECT_EQ(TableKeys(document, "## Errors"), errors);
    Lines faults;
    for (const std::string& key : TableKeys(document, "## Faults")) {
        faults.push_back(key.substr(0, key.find('=')));
    }
    EXPECT_EQ(faults, Lines(Faults::Names().begin(), Faults::Names().end()));
    EXPECT_EQ(TableKeys(document, "## Models"),
              Lines(suite::SupportedModels.begin(), suite::SupportedModels.end()));
}

}  // namespace
}  // namespace krv::tests
