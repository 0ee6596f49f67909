// RecordingPictures: notes which host the adapters ask for a picture.
#pragma once

#include <memory>
#include <string>

#include "hosts/PictureTransfer.h"
#include "tests/support/CallLog.h"

namespace krv::tests {

class RecordingPictures final : public hosts::PictureTransfer {
 public:
    explicit RecordingPictures(CallLog& log) : m_log(log) {}
    void TransferToExcel(std::shared_ptr<ports::ExcelHost>, std::shared_ptr<ports::KRVServer>,
                         ports::DeviceContext context) override {
        m_log.Note("picture to Excel " + std::to_string(context));
    }
    void TransferToWord(std::shared_ptr<ports::WordHost>,
                        std::shared_ptr<ports::KRVServer>) override {
        m_log.Note("picture to Word");
    }

 private:
    CallLog& m_log;
};

}  // namespace krv::tests
