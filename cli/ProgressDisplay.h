#pragma once

#include "cli/CapturedText.h"
#include "cli/Progress.h"

#include <QTimer>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace stackreel
{

/// Decides when the progress is written next. Pure.
class ProgressSchedule
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// For people: due when the percentage has grown by ten, or has changed and five seconds have passed.
    static ProgressSchedule plainLines(Time start) { return {start, 10, false}; }
    /// For programs: due when the percentage has changed, or five seconds have passed.
    static ProgressSchedule reports(Time start) { return {start, 1, true}; }

    /// Whether the progress is due now. If so, the next is scheduled from this percentage and this time.
    bool isDue(int percent, Time now);

private:
    ProgressSchedule(Time start, int step, bool repeats) : m_lastTime(start), m_step(step), m_repeats(repeats)
    {
    }

    Time m_lastTime;
    int m_lastPercent = 0;
    int m_step;
    bool m_repeats; // an unchanged percentage
};

/// How the progress of an export is shown.
struct ProgressStyle {
    bool quiet = false; ///< not at all
    /// Is called with the progress instead of showing it, if it is set and `quiet` is not. Must not throw.
    std::function<void(const Progress&)> report = {};
};

/// Reads an encoder's captured standard error and shows the progress on our own standard error: a bar on a
/// terminal, plain lines elsewhere. The destructor clears the bar. For the thread with the event loop, except
/// for `watch`.
class ProgressDisplay
{
public:
    /// `lengthSeconds` is the length of the finished export.
    ProgressDisplay(double lengthSeconds, ProgressStyle style);
    ~ProgressDisplay();
    ProgressDisplay(const ProgressDisplay&) = delete;
    ProgressDisplay& operator=(const ProgressDisplay&) = delete;

    /// Sets the file to read. Call it once, on any thread.
    void watch(const std::filesystem::path& standardErrorFile) { m_text.open(standardErrorFile); }
    /// Clears the bar and reads the rest of the encoder's text.
    void finish();
    /// The changes that the front has reported so far. If the first text is longer than 64 KiB, those at its
    /// start are missing.
    const std::vector<FrontChange>& changes() const { return m_reader.changes(); }

private:
    void readStatus();
    void show();
    void report();
    void drawBar(std::size_t columns);
    void clearBar();

    ProgressStyle m_style;
    CapturedText m_text;
    EncoderStatusReader m_reader;
    ProgressEstimate m_estimate;
    ProgressSchedule m_schedule;
    QTimer m_timer;
    std::string m_drawn; // the bar on the terminal, with its carriage return; empty when no bar is shown
};

} // namespace stackreel
