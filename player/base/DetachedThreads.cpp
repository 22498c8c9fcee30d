#include "player/base/DetachedThreads.h"

#include "system/StartThread.h"

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace stackreel
{

namespace
{

class DetachedThreads
{
public:
    ~DetachedThreads()
    {
        // A thread that still runs may start others.
        while (std::optional<std::thread> thread = takeOne())
            thread->join();
    }

    void run(std::function<void()> body)
    {
        auto over = std::make_shared<std::atomic<bool>>(false);
        const std::lock_guard lock(m_mutex);
        m_entries.remove_if([](Entry& entry) {
            if (!*entry.over)
                return false;
            entry.thread.join();
            return true;
        });
        m_entries.push_back({over, startThread([body = std::move(body), over]() mutable {
                                 body();
                                 body = nullptr; // destroy its captures on this thread
                                 *over = true;
                             })});
    }

private:
    struct Entry {
        std::shared_ptr<std::atomic<bool>> over;
        std::thread thread;
    };

    std::optional<std::thread> takeOne()
    {
        const std::lock_guard lock(m_mutex);
        if (m_entries.empty())
            return std::nullopt;
        std::thread thread = std::move(m_entries.front().thread);
        m_entries.pop_front();
        return thread;
    }

    std::mutex m_mutex;
    std::list<Entry> m_entries;
};

/// Constructed before `main`, so that a function which `main` registers with `atexit` runs before the
/// destructor.
DetachedThreads reaper;

} // namespace

void runDetached(std::function<void()> body)
{
    reaper.run(std::move(body));
}

} // namespace stackreel
