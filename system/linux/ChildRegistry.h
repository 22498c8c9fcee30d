#pragma once

#include <sys/types.h>

#include <mutex>
#include <set>

namespace stackreel
{

/// The process ids of all children that have not been reaped. A child leaves the list before its id can be
/// reused, so that a signal sent through the list never reaches another process. Any thread.
class ChildRegistry
{
public:
    static ChildRegistry& shared();

    /// Whether children may start: true until `close` is called.
    bool isOpen() const;
    /// Adds a child to the list. Returns false when no child may start any more; the caller then terminates
    /// it.
    bool add(pid_t child);
    /// Removes a child from the list. Call it before the child is reaped.
    void remove(pid_t child);

    std::size_t count() const;
    void signalAll(int signal) const;
    /// Prevents further children from starting.
    void close();

private:
    mutable std::mutex m_lock;
    std::set<pid_t> m_children;
    bool m_open = true;
};

} // namespace stackreel
