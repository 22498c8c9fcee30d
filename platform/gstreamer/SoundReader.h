#pragma once

#include "platform/gstreamer/DecodePipeline.h"
#include "platform/gstreamer/SoundPiece.h"

#include <filesystem>
#include <functional>

namespace stackreel
{

/// Delivers the sound of a file in order, from any time on, without ever waiting for it. One thread.
class SoundReader
{
public:
    enum class Step {
        waiting, ///< nothing can be done until `wake` is called
        piece,   ///< the next piece
        end,     ///< none follows
    };

    /// Opens the file. `wake` as with `DecodePipeline`. Throws `std::runtime_error` when GStreamer lacks an
    /// element.
    SoundReader(const std::filesystem::path& file, std::function<void()> wake);

    /// Goes on from a time on the file's time line.
    void beginAt(Nanoseconds time);
    Step step(SoundPiece& piece);

private:
    DecodePipeline m_pipeline;
    bool m_seekPending = false;
    Nanoseconds m_from = 0;
};

} // namespace stackreel
