// The suite's components as the registry and the version resources of their files describe them.
#pragma once

#include <string>

#include "ports/suite/ComponentVersions.h"

namespace krv::windows {

class RegisteredComponents final : public ports::ComponentVersions {
 public:
    // The name is what the asking component, whose code this is, is registered under.
    explicit RegisteredComponents(std::string ownProgId);
    ports::ComponentVersion Own() override;
    // A component whose file is gone counts as not installed, with the path where it should be.
    ports::ComponentVersion Find(const std::string& progId) override;

 private:
    std::string m_ownProgId;
};

}  // namespace krv::windows
