// Preloaded into a program, it delays the last step of each thread, in which libraries destroy what they keep
// for the thread, and the end of the process even more. OpenSSL takes a lock in that step. A process that
// runs its `atexit` functions meanwhile frees that lock, and crashes in most runs, not once in a thousand.

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

// Registered before all others, so called after them.
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
