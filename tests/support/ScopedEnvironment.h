#pragma once

#include <optional>
#include <string>

namespace stackreel
{

/// Sets an environment variable while the object exists; without a value it unsets the variable. No other
/// thread may be running.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char* name, const std::optional<std::string>& value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_before;
};

} // namespace stackreel
