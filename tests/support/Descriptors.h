#pragma once

#include <sys/resource.h>

#include <set>

namespace stackreel
{

/// The descriptors this process has open.
std::set<int> openDescriptors();

/// Whether this process has a child, running or ended but not collected.
bool hasChildren();

/// A limit on this process's descriptors, or as many as the system lets it have, until the object goes.
class ScopedDescriptorLimit
{
public:
    ScopedDescriptorLimit();
    explicit ScopedDescriptorLimit(rlim_t count);
    ~ScopedDescriptorLimit();
    ScopedDescriptorLimit(const ScopedDescriptorLimit&) = delete;
    ScopedDescriptorLimit& operator=(const ScopedDescriptorLimit&) = delete;

private:
    rlimit m_before{};
};

} // namespace stackreel
