#include "system/RunningChildren.h"

#include "system/CleanupProcess.h"
#include "system/SystemCalls.h"
#include "system/linux/ChildRegistry.h"

#include <csignal>

namespace stackreel
{

ChildRegistry& ChildRegistry::shared()
{
    // Never destroyed: threads may still reap children while the program ends.
    static auto* const registry = new ChildRegistry;
    return *registry;
}

bool ChildRegistry::isOpen() const
{
    const std::lock_guard guard(m_lock);
    return m_open;
}

bool ChildRegistry::add(pid_t child)
{
    const std::lock_guard guard(m_lock);
    m_children.insert(child);
    CleanupProcess::addChild(child);
    return m_open;
}

void ChildRegistry::remove(pid_t child)
{
    const std::lock_guard guard(m_lock);
    m_children.erase(child);
    CleanupProcess::removeChild(child);
}

std::size_t ChildRegistry::count() const
{
    const std::lock_guard guard(m_lock);
    return m_children.size();
}

void ChildRegistry::signalAll(int signal) const
{
    const std::lock_guard guard(m_lock);
    for (const pid_t child : m_children)
        systemCalls().kill(child, signal);
}

void ChildRegistry::close()
{
    const std::lock_guard guard(m_lock);
    m_open = false;
}

std::size_t RunningChildren::count()
{
    return ChildRegistry::shared().count();
}

void RunningChildren::end()
{
    // Close first: `launch` terminates a child that starts between the two calls.
    ChildRegistry::shared().close();
    ChildRegistry::shared().signalAll(SIGTERM);
}

void RunningChildren::kill()
{
    ChildRegistry::shared().signalAll(SIGKILL);
}

} // namespace stackreel
