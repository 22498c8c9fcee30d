#pragma once

#include <sys/types.h>

#include <mutex>
#include <set>

namespace stackreel
{

/// The process ids of all children that have not been collected. A child is on the list for as long as its id
/// is its own, so that a signal sent through the list reaches no stranger. Any thread.
class ChildRegistry
{
public:
    static ChildRegistry& shared();

    /// Whether children may start.
    bool isOpen() const;
    /// Puts a child on the list; gives whether children may still start.
    bool add(pid_t child);
    /// Takes a child off the list, before it is collected.
    void remove(pid_t child);

    std::size_t count() const;
    void signalAll(int signal) const;
    /// Lets no child start any more.
    void close();

private:
    mutable std::mutex m_lock;
    std::set<pid_t> m_children;
    bool m_open = true;
};

} // namespace stackreel
