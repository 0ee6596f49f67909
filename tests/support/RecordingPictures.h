// RecordingPictures: notes which host the adapters ask for a picture.
#pragma once

#include <string>

#include "hosts/PictureTransfer.h"
#include "tests/support/CallLog.h"

namespace krv::testing {

class RecordingPictures final : public PictureTransfer {
 public:
    explicit RecordingPictures(CallLog& log) : m_log(log) {}
    void TransferToExcel(office::ExcelHost&, suite::KRVServer&,
                         desktop::DeviceContext context) override {
        m_log.Note("picture to Excel " + std::to_string(context));
    }
    void TransferToWord(office::WordHost&, suite::KRVServer&) override {
        m_log.Note("picture to Word");
    }

 private:
    CallLog& m_log;
};

}  // namespace krv::testing
