// AppConnectionWord: the host adapter for Word.
//
// Word has no cells to transfer data into, so the members for that are refused with Error
// 0x80040005, which has no description of its own. Word sends the adapter no events: the toolbar
// changes only when the control says so, and nothing is reset when the adapter ends. The adapter
// works on whichever document is active, so that it attaches also while none is open. Created by
// the control and shared with its dialogs.
#pragma once

#include <memory>

#include "hosts/OfficeConnection.h"
#include "ports/office/WordHost.h"

namespace krv::hosts {

class AppConnectionWord : public OfficeConnection {
 public:
    explicit AppConnectionWord(const HostServices& services);

    SavedDataCvalues SavedDataCValue() override { return WordSaved; }
    bool DoDataTransfer(bool immed, DateValue startDate, std::int32_t num_samples,
                        double intervalInSeconds) override;
    void DoPictureTransfer() override;
    // Attaches again with every call; a call that fails leaves the adapter with what it had.
    bool Init(const std::shared_ptr<ports::HostApplication>& app,
              const std::shared_ptr<ports::KRVServer>& server, HostedControl& ctl,
              ports::DeviceContext m_HDC) override;
    std::shared_ptr<ports::HostApplication> hostApp() override { return m_wordApp; }
    void TransferDataToApp() override;
    void EnableRepeatMeaureButtons() override;
    void EnableSingleMeaureButtons() override;
    // Word keeps no data of the adapter.
    void WriteProperties(PropertyBag& /*propBag*/) override {}
    void ReadProperties(PropertyBag& /*propBag*/) override {}
    void SetInRepeatDataTransfer(bool /*val*/) override {}

 private:
    ports::OfficeHost& Office() override { return *Word(); }
    void SetHostInitialState() override;
    // Leaves the template that Word keeps the bar in without changes.
    void ChangeHostBar(const std::function<void()>& change) override;
    // Keeps the template that carries the toolbar loaded.
    void AfterEnabling() override;

    void Attach(const std::shared_ptr<ports::HostApplication>& app, HostedControl& ctl);
    // Throws Error 91 before the adapter is attached.
    const std::shared_ptr<ports::WordHost>& Word();

    std::shared_ptr<ports::WordHost> m_wordApp;
};

}  // namespace krv::hosts
