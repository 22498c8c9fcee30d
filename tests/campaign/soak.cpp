/// Uses the model for a long time, and checks that the process does not grow and that all exports and loads
/// succeed, except loads of the last clip, which must fail.
///
/// soak SECONDS SEED FOLDER CLIP CLIP…
///
/// About once a minute it rests with the first clip looping, and prints what the process uses. Descriptors
/// and threads have to be the same at each rest as at the first. Allocated memory varies by chance from rest
/// to rest, so medians are compared: of the rests after the first ten minutes, the later half must not need
/// over 3 % more than the earlier half. Writes its exports to FOLDER. Ends with status 1 when a check fails.

#include "tests/campaign/ProcessFigures.h"
#include "tests/campaign/SoakSession.h"
#include "tests/support/Awaited.h"
#include "tests/support/ProcessEnd.h"

#include <QCoreApplication>

#include <glib.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <vector>

using namespace stackreel;

namespace
{

using Clock = std::chrono::steady_clock;
constexpr std::chrono::minutes warmUp(10);
constexpr double mostGrowth = 0.03;

/// The figures at rest. Waits up to ten seconds for the last threads to end. Calls `malloc_trim`, because the
/// memory that the allocator keeps varies.
ProcessFigures settledFigures(const std::optional<ProcessFigures>& wanted)
{
    ::malloc_trim(0);
    ProcessFigures figures;
    eventually(
        [&] {
            figures = ProcessFigures::now();
            return !wanted ||
                   (figures.threads == wanted->threads && figures.descriptors == wanted->descriptors);
        },
        std::chrono::seconds(10));
    return figures;
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

class Soak
{
public:
    Soak(SoakSession& session, std::chrono::seconds duration) : m_session(session), m_duration(duration) {}

    /// Whether all checks held.
    bool run()
    {
        m_session.loadEach();
        const auto step = std::min<Clock::duration>(std::chrono::seconds(48), m_duration / 2);
        do {
            m_session.use(std::chrono::duration_cast<std::chrono::milliseconds>(step));
            m_session.returnToFirstClip();
            check(settledFigures(m_first));
        } while (elapsed() < m_duration);
        compareMemory();
        require(m_session.counts().failedExports == 0, "exports have failed");
        require(m_session.counts().wrongLoads == 0, "the wrong clips have failed to load");
        return m_holds;
    }

private:
    Clock::duration elapsed() const { return Clock::now() - m_start; }

    void check(const ProcessFigures& figures)
    {
        print(figures);
        if (!m_first)
            m_first = figures;
        require(figures.descriptors == m_first->descriptors, "the number of descriptors has changed");
        require(figures.threads == m_first->threads, "the number of threads has changed");
        if (elapsed() >= warmUp)
            m_memory.push_back(figures.memory);
    }
    void compareMemory()
    {
        if (m_memory.size() < 4)
            return;
        const auto middle = m_memory.begin() + static_cast<std::ptrdiff_t>(m_memory.size() / 2);
        const double before = median({m_memory.begin(), middle});
        const double after = median({middle, m_memory.end()});
        std::printf("median of the memory: %.1f MiB, then %.1f MiB\n", before, after);
        require(after <= before * (1 + mostGrowth), "memory has grown by more than 3 %");
    }
    void require(bool condition, const char* failure)
    {
        if (condition)
            return;
        std::printf("FAILED %s\n", failure);
        m_holds = false;
    }
    void print(const ProcessFigures& figures) const
    {
        const auto& counts = m_session.counts();
        std::printf("%6.1f min  %7.1f MiB (%.1f resident)  %d descriptors  %d threads  %d loads (%d failed), "
                    "%d seeks, %d trims, "
                    "%d exports (%d cancelled, %d failed), %llu frames\n",
                    std::chrono::duration<double, std::ratio<60>>(elapsed()).count(), figures.memory,
                    figures.resident, figures.descriptors, figures.threads, counts.loads, counts.failedLoads,
                    counts.seeks, counts.trims, counts.exports, counts.cancelledExports, counts.failedExports,
                    static_cast<unsigned long long>(m_session.frames()));
        std::fflush(stdout);
    }

    SoakSession& m_session;
    Clock::time_point m_start = Clock::now();
    Clock::duration m_duration;
    std::optional<ProcessFigures> m_first;
    std::vector<double> m_memory; ///< at each rest after the first ten minutes, in MiB
    bool m_holds = true;
};

int run(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 6) {
        std::fprintf(stderr, "soak SECONDS SEED FOLDER CLIP CLIP…\n");
        return 2;
    }
    // End idle GLib threads after 1 s, not 15 s, so that their number does not vary.
    g_thread_pool_set_max_idle_time(1000);
    SoakSession session({argv + 4, argv + argc}, argv[3], static_cast<std::uint32_t>(std::atoi(argv[2])));
    try {
        return Soak(session, std::chrono::seconds(std::atoi(argv[1]))).run() ? 0 : 1;
    } catch (const std::exception& error) {
        std::printf("FAILED %s\n", error.what());
        return 1;
    }
}

} // namespace

int main(int argc, char** argv)
{
    endProcess(run(argc, argv));
}
