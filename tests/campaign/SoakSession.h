#pragma once

#include "model/AppModel.h"
#include "player/base/VideoOutput.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <random>
#include <vector>

namespace stackreel
{

/// Answers each panel at once.
class AnsweringPanel;

/// Reads every 16th pixel of each frame. Keeps the number of frames and a checksum.
class CountingOutput : public VideoOutput
{
public:
    void present(VideoFrame frame) noexcept override;
    void clear() noexcept override {}
    std::uint64_t frames() const { return m_frames; }

private:
    std::atomic<std::uint64_t> m_frames = 0;
    std::atomic<std::uint64_t> m_checksum = 0;
};

/// Performs random user actions on a model with the real player and the real tools. Main thread.
class SoakSession
{
public:
    struct Counts {
        int loads = 0;
        int failedLoads = 0;
        int wrongLoads = 0; ///< of the last clip that succeeded, of another one that failed
        int seeks = 0;
        int trims = 0;
        int exports = 0;
        int failedExports = 0;
        int cancelledExports = 0;
    };

    /// `clips` has at least two elements. The last one cannot be loaded. Exports are written to `folder`.
    SoakSession(std::vector<std::filesystem::path> clips, std::filesystem::path folder, std::uint32_t seed);
    ~SoakSession();

    /// Loads each clip once. Some files and threads are opened when they are first needed, and stay.
    void loadEach();
    /// Performs random actions for some time. Takes longer if a load or an export does. Throws
    /// `std::runtime_error` when an export does not begin or does not end within a minute.
    void use(std::chrono::milliseconds duration);
    /// Loads the first clip and lets it loop until all other work has ended and its decoder is closed. Each
    /// call ends in the same state. Throws `std::runtime_error` when the clip cannot be loaded, or when one
    /// of its waits takes more than a minute.
    void returnToFirstClip();

    const Counts& counts() const { return m_counts; }
    std::uint64_t frames() const { return m_output->frames(); }

private:
    void performAction();
    void load(const std::filesystem::path& clip);
    void loadAny();
    void scrub();
    void trim();
    void change();
    void exportRange();
    void run(std::chrono::milliseconds duration);
    bool finishLoad();
    void judgeLoad(const std::filesystem::path& clip);
    void notePhase();
    int below(int limit);
    double timeInClip();

    std::vector<std::filesystem::path> m_clips;
    std::filesystem::path m_destination;
    std::mt19937 m_random;
    Counts m_counts;
    Phase::Kind m_phase = Phase::Kind::empty;
    std::shared_ptr<CountingOutput> m_output = std::make_shared<CountingOutput>();
    std::shared_ptr<AnsweringPanel> m_panel;
    std::unique_ptr<AppModel> m_model;
};

} // namespace stackreel
