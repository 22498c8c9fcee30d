// This library is preloaded into a program to make a rare crash frequent. Each thread takes an OpenSSL lock
// in its last step, in which thread-local data is destroyed. If the process runs its `atexit` functions at
// that time, it frees the lock, and the thread crashes. The library delays the last step of each thread, and
// the end of the process even more, so this happens in most runs instead of once in a thousand.

#include <dlfcn.h>
#include <pthread.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>
#include <utility>

namespace
{

using namespace std::chrono_literals;
using Function = void* (*)(void*);

struct Start {
    Function function;
    void* argument;
};

thread_local bool isEnding = false;

void* run(void* argument)
{
    const std::unique_ptr<Start> start(static_cast<Start*>(argument));
    void* const result = start->function(start->argument);
    isEnding = true;
    return result;
}

// This function is registered before all others, so it is called after them.
[[maybe_unused]] const int registered = std::atexit([] { std::this_thread::sleep_for(4s); });

} // namespace

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, Function function,
                              void* argument)
{
    static const auto next = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    return next(thread, attributes, &run, new Start{function, argument});
}

extern "C" int pthread_rwlock_wrlock(pthread_rwlock_t* lock)
{
    static const auto next =
        reinterpret_cast<decltype(&pthread_rwlock_wrlock)>(dlsym(RTLD_NEXT, "pthread_rwlock_wrlock"));
    if (std::exchange(isEnding, false))
        std::this_thread::sleep_for(3s);
    return next(lock);
}
