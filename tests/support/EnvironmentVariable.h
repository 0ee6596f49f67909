// EnvironmentVariable: a variable of the environment that is set for as long as the object lives,
// and then is what it was.
#pragma once

#include <cstdlib>
#include <string>
#include <utility>

namespace krv::tests {

class EnvironmentVariable {
 public:
    EnvironmentVariable(std::string name, const std::string& value) : m_name(std::move(name)) {
        const char* const before = std::getenv(m_name.c_str());
        m_before = before != nullptr ? before : "";
        Set(value);
    }
    ~EnvironmentVariable() { Set(m_before); }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

    // An empty one counts as not set.
    void Set(const std::string& value) {
#ifdef _WIN32
        _putenv_s(m_name.c_str(), value.c_str());
#else
        if (value.empty()) {
            unsetenv(m_name.c_str());
        } else {
            setenv(m_name.c_str(), value.c_str(), 1);
        }
#endif
    }

 private:
    std::string m_name;
    std::string m_before;
};

}  // namespace krv::tests
