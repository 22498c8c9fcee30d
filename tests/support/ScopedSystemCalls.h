#pragma once

#include "system/SystemCalls.h"

namespace stackreel
{

/// Lets a test replace entries of the table of system calls through `->`. The destructor restores the table,
/// so every thread that makes system calls must have ended before.
class ScopedSystemCalls
{
public:
    ScopedSystemCalls() : m_before(systemCalls()) {}
    ~ScopedSystemCalls() { systemCalls() = m_before; }
    ScopedSystemCalls(const ScopedSystemCalls&) = delete;
    ScopedSystemCalls& operator=(const ScopedSystemCalls&) = delete;

    SystemCalls* operator->() { return &systemCalls(); }
    /// The original calls.
    const SystemCalls& before() const { return m_before; }

private:
    SystemCalls m_before;
};

} // namespace stackreel
