// Which versions of the suite's components the computer has.
#pragma once

#include <string>

namespace krv::ports {

struct ComponentVersion {
    // The ProgID.
    std::string name;
    bool isInstalled = false;
    // As the platform writes them; each is empty where it is unknown.
    std::string version = {};
    std::string buildDate = {};
    // The full path of the file that the component is in.
    std::string path = {};
};

class ComponentVersions {
 public:
    virtual ~ComponentVersions() = default;
    // The component that asks. The path of its file is there even where it isn't registered.
    virtual ComponentVersion Own() = 0;
    // A component that isn't installed is no error.
    virtual ComponentVersion Find(const std::string& progId) = 0;
};

}  // namespace krv::ports
