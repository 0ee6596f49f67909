// WordPictureTarget: Word as the place that a screen image is put into: where the active document
// puts it.
#pragma once

#include <memory>
#include <utility>

#include "image/PictureTarget.h"
#include "ports/office/WordHost.h"

namespace krv::image {

class WordPictureTarget final : public PictureTarget {
 public:
    explicit WordPictureTarget(std::shared_ptr<ports::WordHost> word) : m_word(std::move(word)) {}

    [[nodiscard]] std::string PlacementCaption() const override {
        return "Place In Active Document";
    }
    void SetBusyCursor(bool isBusy) override;
    void Place(const std::string& file) override;

 private:
    std::shared_ptr<ports::WordHost> m_word;
};

}  // namespace krv::image
