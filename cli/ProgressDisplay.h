#pragma once

#include "cli/CapturedText.h"
#include "cli/Progress.h"

#include <QTimer>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace stackreel
{

/// When the next plain line of progress is due: not before the percentage has changed, and then after five
/// seconds or another ten percent, whichever comes first. Pure.
class PlainLinePace
{
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit PlainLinePace(Time start) : m_lastTime(start) {}
    /// Whether a line is due; the pace then goes on from it.
    bool isDue(int percent, Time now);

private:
    Time m_lastTime;
    int m_lastPercent = 0;
};

/// Follows an encoder by the file that captures its standard error, and shows the progress on standard error:
/// a bar on a terminal, plain lines elsewhere. What it drew goes with it. For the thread with the event loop,
/// except for `watch`.
class ProgressDisplay
{
public:
    /// `lengthSeconds` is the length of the finished export. A quiet one shows nothing.
    ProgressDisplay(double lengthSeconds, bool quiet);
    ~ProgressDisplay();
    ProgressDisplay(const ProgressDisplay&) = delete;
    ProgressDisplay& operator=(const ProgressDisplay&) = delete;

    /// Names the capture file, once. Any thread.
    void watch(const std::filesystem::path& standardErrorFile) { m_text.open(standardErrorFile); }
    /// Ends the display, takes in what the encoder wrote last, and gives its last status.
    std::optional<EncoderStatus> finish();

private:
    void readAlong();
    void show();
    void drawBar(std::size_t columns);
    void clearBar();

    CapturedText m_text;
    EncoderStatusReader m_reader;
    ProgressEstimate m_estimate;
    PlainLinePace m_pace;
    QTimer m_timer;
    std::string m_drawn; // the bar on the terminal, with its carriage return; empty when there is none
};

} // namespace stackreel
