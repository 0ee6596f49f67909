// QuietAppConnection: a host adapter that takes everything and does nothing; doubles override what
// their tests look at.
#pragma once

#include <memory>
#include <string>

#include "hosts/AppConnection.h"

namespace krv::tests {

class QuietAppConnection : public hosts::AppConnection {
 public:
    hosts::SavedDataCvalues SavedDataCValue() override { return hosts::ExcelSaved; }
    bool DoDataTransfer(bool, DateValue, std::int32_t, double) override { return false; }
    void DoPictureTransfer() override {}
    bool Init(const std::shared_ptr<ports::HostApplication>&,
              const std::shared_ptr<ports::KRVServer>&, hosts::HostedControl&,
              ports::DeviceContext) override {
        return true;
    }
    std::shared_ptr<ports::HostApplication> hostApp() override { return nullptr; }
    void TransferDataToApp() override {}
    void UpdateConnectedIconAndTooltip(const std::string&) override {}
    void EnableToolbarButtons(std::int16_t) override {}
    void EnableRepeatMeaureButtons() override {}
    void EnableSingleMeaureButtons() override {}
    void UpdateStatus(const std::string&) override {}
    void SetBusyCursor(bool) override {}
    void WriteProperties(PropertyBag&) override {}
    void ReadProperties(PropertyBag&) override {}
    void DoHelp(ports::WindowHandle, std::int32_t) override {}
    void SetInitialToolbarState() override {}
    void SetInRepeatDataTransfer(bool) override {}
};

}  // namespace krv::tests
