// DataTransfer: the settings of a timed transfer of measured data into the host document. This
// product offers no such transfer: a workbook only remembers that the settings exist.
#pragma once

#include <cstdint>
#include <memory>

#include "common/PropertyBag.h"
#include "ports/office/ExcelHost.h"
#include "ports/suite/KRVServer.h"

namespace krv::hosts {

class DataTransfer {
 public:
    bool m_immediately = false;
    // Seconds between samples.
    double m_interval = 0;
    std::int32_t m_numSamples = 0;
    DateValue m_startDate;
    bool m_makeExcelGraph = false;
    bool m_includeEngUnits = false;
    // Seconds.
    double m_duration = 0;
    bool m_SamplesSpecifiedAsDuration = false;
    bool m_getRepeatedData = false;
    std::int32_t m_DataTransferItemsSelected = 0;

    // The settings have no entries of their own in the bag.
    void ReadProperties(PropertyBag& /*propBag*/) {}
    void WriteProperties(PropertyBag& /*propBag*/) const {}

    // May hand another application object back; leaves the one given as it is.
    void DoDataTransfer(std::shared_ptr<ports::ExcelHost>& /*app*/,
                        const std::shared_ptr<ports::KRVServer>& /*server*/) {}
};

}  // namespace krv::hosts
