// Word as the application around the control, and its documents, over automation.
#pragma once

#include <utility>

#include "ports/office/WordHost.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationWord final : public ports::WordHost, public AutomationPeer {
 public:
    explicit AutomationWord(LateBound application) : m_application(std::move(application)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_application.Object(); }

    std::shared_ptr<ports::CommandBar> CommandBarByName(const std::string& name) override;
    std::vector<std::shared_ptr<ports::AddIn>> AddIns() override;
    bool IsStatusBarDisplayed() override;
    void SetStatusBarText(const std::string& text) override;
    void SetBusyCursor(bool isBusy) override;
    std::shared_ptr<ports::WordDocument> ActiveDocument() override;
    std::vector<std::shared_ptr<ports::WordTemplate>> Templates() override;

 private:
    LateBound m_application;
};

class AutomationWordDocument final : public ports::WordDocument, public AutomationPeer {
 public:
    explicit AutomationWordDocument(LateBound document) : m_document(std::move(document)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_document.Object(); }

    std::shared_ptr<ports::WordHost> Application() override;
    void AddPicture(const std::string& fileName) override;

 private:
    LateBound m_document;
};

}  // namespace krv::windows
