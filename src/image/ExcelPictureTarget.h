// ExcelPictureTarget: Excel as the place that a screen image is put into, at the active cell.
#pragma once

#include <memory>
#include <utility>

#include "image/PictureTarget.h"
#include "ports/desktop/ScreenResolution.h"
#include "ports/office/ExcelHost.h"

namespace krv::image {

class ExcelPictureTarget final : public PictureTarget {
 public:
    // The resolution outlives this; it is that of the screen that the sheet is shown on.
    ExcelPictureTarget(std::shared_ptr<ports::ExcelHost> excel, ports::ScreenResolution& resolution,
                       ports::DeviceContext context)
        : m_excel(std::move(excel)), m_resolution(resolution), m_context(context) {}

    [[nodiscard]] std::string PlacementCaption() const override {
        return "Place In Active Sheet at cursor";
    }
    void SetBusyCursor(bool isBusy) override;
    // The application updates its screen afterwards as it did before, also when placing fails.
    void Place(const std::string& file) override;

 private:
    std::shared_ptr<ports::ExcelHost> m_excel;
    ports::ScreenResolution& m_resolution;
    ports::DeviceContext m_context;
};

}  // namespace krv::image
