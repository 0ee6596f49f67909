// FakeAddIn: an add-in of an office application, installed or not.
#pragma once

#include <string>
#include <utility>

#include "ports/office/OfficeHost.h"

namespace krv::tests {

class FakeAddIn final : public ports::AddIn {
 public:
    FakeAddIn(std::string name, std::string path)
        : m_name(std::move(name)), m_path(std::move(path)) {}
    bool Installed = false;

    std::string Name() override { return m_name; }
    std::string Path() override { return m_path; }
    void SetInstalled(bool installed) override { Installed = installed; }

 private:
    std::string m_name;
    std::string m_path;
};

}  // namespace krv::tests
