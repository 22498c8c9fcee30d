#include "tests/support/ScopedEnvironment.h"

#include <stdlib.h>

namespace stackreel
{

namespace
{

void set(const std::string& name, const std::optional<std::string>& value)
{
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
}

} // namespace

ScopedEnvironment::ScopedEnvironment(const char* name, const std::optional<std::string>& value) : m_name(name)
{
    if (const char* before = ::getenv(name))
        m_before = before;
    set(m_name, value);
}

ScopedEnvironment::~ScopedEnvironment()
{
    set(m_name, m_before);
}

} // namespace stackreel
