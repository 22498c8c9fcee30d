#pragma once

#include <sys/resource.h>

#include <set>

namespace stackreel
{

/// The open file descriptors of this process.
std::set<int> openDescriptors();

/// Whether this process has a child that is running, or has ended but was not waited for.
bool hasChildren();

/// Limits the number of file descriptors of this process while the object exists. Without a count, raises the
/// limit to the highest value that is allowed.
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
