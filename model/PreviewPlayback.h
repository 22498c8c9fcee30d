#pragma once

#include "player/PreviewPlayer.h"
#include "player/base/MediaTime.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace stackreel
{

class AppModel;

/// Loops the trimmed range of the preview file, moves the playhead and the trim points within their limits,
/// and reports the playhead to the model. All times are seconds on the source's time line. Owns the path of
/// the preview file, the time observer, and the flag whether playback resumes after a timeline
/// drag. Main thread.
class PreviewPlayback
{
public:
    using MakePlayer = std::function<std::shared_ptr<PreviewPlayer>()>;

    PreviewPlayback(AppModel& model, MakePlayer makePlayer);
    PreviewPlayback(const PreviewPlayback&) = delete;
    PreviewPlayback& operator=(const PreviewPlayback&) = delete;

    /// Sets the file to play. It is used the next time a player or a loop is created.
    void setPreviewURL(const std::filesystem::path& file);
    /// Creates a player for the preview file and plays the loop.
    void configurePlayer();
    /// Stops and releases the player.
    void tearDownPlayer();

    void togglePreviewPlayback();
    void seekPreview(double seconds);
    void updateTrimStart(double seconds);
    void updateTrimEnd(double seconds);
    void beginTimelineInteraction();
    void endTimelineInteraction(bool rebuildLoop);
    void endTimelineStep();

    /// Play or pause the player, if there is one, and set the model's `previewPlaying`.
    void play();
    void pause();

private:
    double minimumTrimDuration() const;
    void rebuildPlayerLoop(double start, bool shouldPlay);
    void installTimeObserver(PreviewPlayer& player);
    void updateCurrentTime(MediaTime time);
    void seekPlayer(double seconds);
    /// Ends the interaction. Returns whether playback resumes, or `std::nullopt` if the interaction began
    /// with another source.
    std::optional<bool> endInteraction();

    AppModel& m_model;
    MakePlayer m_makePlayer;
    std::optional<std::filesystem::path> m_previewURL;
    PreviewPlayer::TimeObserverToken m_playerTimeObserver = 0;
    enum class Interaction { none, running, superseded };
    Interaction m_interaction = Interaction::none;
    bool m_resumePlaybackAfterTimelineInteraction = false;
};

} // namespace stackreel
