#pragma once

#include "platform/SystemCalls.h"

namespace stackreel
{

/// Restores the table of system calls when it goes; in between, tests replace entries through `->`. No thread
/// that makes system calls may outlive it.
class ScopedSystemCalls
{
public:
    ScopedSystemCalls() : m_before(systemCalls()) {}
    ~ScopedSystemCalls() { systemCalls() = m_before; }
    ScopedSystemCalls(const ScopedSystemCalls&) = delete;
    ScopedSystemCalls& operator=(const ScopedSystemCalls&) = delete;

    SystemCalls* operator->() { return &systemCalls(); }
    /// The calls as they were.
    const SystemCalls& before() const { return m_before; }

private:
    SystemCalls m_before;
};

} // namespace stackreel
