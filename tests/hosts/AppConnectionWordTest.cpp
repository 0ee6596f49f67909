#include "hosts/AppConnectionWord.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "common/MemoryPropertyBag.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FakeHostedControl.h"
#include "tests/support/FakeHosts.h"
#include "tests/support/RecordingHelp.h"
#include "tests/support/RecordingPictures.h"

namespace krv::tests {
namespace {

using namespace hosts;

class WordAdapter : public ::testing::Test {
 protected:
    CallLog log;
    CallLog ownLog;
    FakeSuite suite{log};
    RecordingHelp help{log};
    RecordingPictures pictures{log};
    FakeHostedControl control{log, ownLog};
    std::shared_ptr<FakeWordHost> word = std::make_shared<FakeWordHost>(log);
    std::shared_ptr<hosts::AppConnectionWord> adapter =
        std::make_shared<hosts::AppConnectionWord>(hosts::HostServices{suite, help, pictures});

    bool Init(const std::shared_ptr<ports::HostApplication>& app) {
        const bool isAttached = adapter->Init(app, suite.Server, control, 77);
        log.Take();
        return isAttached;
    }
    // An adapter in Word with a connected instrument and a log that starts empty.
    void Connect(const std::string& hostName) {
        suite.Server->Session = std::make_shared<FakeSession>(log, "GPIB0::19");
        ASSERT_TRUE(Init(word));
        adapter->EnableToolbarButtons(3);
        adapter->UpdateConnectedIconAndTooltip(hostName);
        log.Take();
    }
    std::shared_ptr<FakeAddIn> AddAddIn(const std::string& name, const std::string& path = {}) {
        auto addIn = std::make_shared<FakeAddIn>(name, path);
        word->InstalledAddIns.push_back(addIn);
        return addIn;
    }
};

TEST_F(WordAdapter, AttachesOnlyToWordAndAgainWithEveryCall) {
    EXPECT_FALSE(Init(std::make_shared<ForeignHost>()));
    EXPECT_FALSE(Init(std::make_shared<FakeExcelHost>(log)));
    EXPECT_EQ(adapter->hostApp(), nullptr);
    word->Active.clear();
    EXPECT_TRUE(Init(word)) << "also while no document is open";
    EXPECT_EQ(adapter->hostApp(), word);
    EXPECT_EQ(word->Bar->State(), UnconnectedLook);
    const auto second = std::make_shared<FakeWordHost>(log);
    EXPECT_TRUE(Init(second));
    EXPECT_EQ(adapter->hostApp(), second);
    EXPECT_FALSE(Init(std::make_shared<ForeignHost>()));
    EXPECT_EQ(adapter->hostApp(), second) << "what failed changes nothing";
}

TEST_F(WordAdapter, FindsItsHostThroughTheControl) {
    EXPECT_FALSE(Init(nullptr)) << "the control lies in no document of Word";
    suite.Document = std::make_shared<FakeWorkbook>("Book1", std::make_shared<FakeExcelHost>(log));
    EXPECT_FALSE(Init(nullptr));
    suite.Document = std::make_shared<FakeWordDocument>(log, "Letter", word);
    EXPECT_TRUE(Init(nullptr));
    EXPECT_EQ(adapter->hostApp(), word);
}

TEST_F(WordAdapter, KeepsItsTemplateInstalledWheneverTheButtonsChange) {
    const auto other = AddAddIn("LETTERS.DOT");
    const auto first = AddAddIn("krv.dot");
    const auto second = AddAddIn("KRV.DOT");
    ASSERT_TRUE(Init(word));
    // A bar that is gone comes back with the template.
    log.FailAt = "bar";
    for (const std::int16_t type : {std::int16_t{0}, std::int16_t{2}, std::int16_t{3}}) {
        first->Installed = second->Installed = false;
        adapter->EnableToolbarButtons(type);
        EXPECT_TRUE(first->Installed && second->Installed) << type;
        EXPECT_TRUE(log.Take().ends_with("; add-ins")) << "after the buttons";
    }
    log.FailAt.clear();
    first->Installed = false;
    adapter->SetInitialToolbarState();
    EXPECT_TRUE(first->Installed);
    EXPECT_TRUE(log.Take().starts_with("add-ins; bar TQL/KRV Signal Generator; position 1"));
    EXPECT_FALSE(other->Installed);
}

TEST_F(WordAdapter, LeavesWordNothingToAskAboutAtItsEnd) {
    Connect("My Computer");
    log.FailAt = "GetImage disable";
    adapter->SetInitialToolbarState();
    EXPECT_FALSE(word->Bar->IsModified);
    word->Bar->IsModified = true;
    adapter->EnableToolbarButtons(3);
    EXPECT_TRUE(word->Bar->IsModified) << "by the user";
}

TEST_F(WordAdapter, RefusesWhatNeedsCells) {
    ASSERT_TRUE(Init(word));
    const std::function<void()> members[] = {
        [&] { adapter->DoDataTransfer(true, {}, 10, 1.0); },
        [&] { adapter->TransferDataToApp(); },
        [&] { adapter->EnableRepeatMeaureButtons(); },
        [&] { adapter->EnableSingleMeaureButtons(); },
    };
    for (const auto& member : members) {
        EXPECT_EQ(ErrorOf(member), "-2147221499 ") << "member " << &member - members;
    }
    EXPECT_EQ(log.Take(), "");
}

TEST_F(WordAdapter, HasNothingToRemember) {
    EXPECT_EQ(adapter->SavedDataCValue(), hosts::WordSaved);
    ASSERT_TRUE(Init(word));
    adapter->SetInRepeatDataTransfer(true);
    MemoryPropertyBag bag;
    adapter->WriteProperties(bag);
    EXPECT_TRUE(bag.Entries().empty());
    bag.Write("dataTransferSaved", true);
    adapter->ReadProperties(bag);
    EXPECT_EQ(bag.Entries().size(), 1u);
}

TEST_F(WordAdapter, ShowsNothingBeforeItIsAttached) {
    adapter->SetInitialToolbarState();
    EXPECT_EQ(log.Take(), "");
    ASSERT_TRUE(Init(word));
    adapter->UpdateStatus("Working");
    EXPECT_EQ(log.Take(), "status Working");
}

TEST_F(WordAdapter, OpensTheHelpBesideItsTemplate) {
    ASSERT_TRUE(Init(word));
    AddAddIn("KRV.XLA", "C:\\Excel's");
    adapter->DoHelp(5, 100);
    EXPECT_EQ(log.Take(), "add-ins") << "without the template there is no help";
    AddAddIn("Krv.dot", "C:\\Templates");
    adapter->DoHelp(5, 1);
    EXPECT_EQ(log.Take(), "add-ins; help 5 C:\\Templates\\krvwtool.chm at download.html");
}

TEST_F(WordAdapter, HandsPicturesToWhatTransfersThem) {
    EXPECT_THROW(adapter->DoPictureTransfer(), Error) << "not attached";
    ASSERT_TRUE(Init(word));
    adapter->DoPictureTransfer();
    EXPECT_EQ(log.Take(), "picture to Word");
}

TEST_F(WordAdapter, LeavesTheToolbarAsItIsWhenItEnds) {
    Connect("My Computer");
    const std::string look = word->Bar->State();
    word->Active = "Other";
    adapter.reset();
    EXPECT_EQ(word->Bar->State(), look);
    EXPECT_EQ(log.Take(), "");
}

}  // namespace
}  // namespace krv::tests
