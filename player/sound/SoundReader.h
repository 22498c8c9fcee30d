#pragma once

#include "player/sound/SoundPiece.h"
#include "player/source/DecodePipeline.h"
#include "player/source/EndOfStream.h"

#include <functional>
#include <memory>
#include <optional>

namespace stackreel
{

/// Delivers the sound of a file in order, from any time on. No call waits for it. One thread.
class SoundReader
{
public:
    enum class Step {
        waiting, ///< nothing can be done until `wake` is called, or at `deadline`
        piece,   ///< the next piece
        end,     ///< none follows
    };

    /// Opens the file. `wake` as with `DecodePipeline`. Throws `std::runtime_error` when GStreamer lacks an
    /// element.
    SoundReader(SourceFile file, std::function<void()> wake);

    /// Continues from shortly before a time on the file's time line. After an error the file is opened again.
    void beginAt(Nanoseconds time);
    Step step(SoundPiece& piece);
    /// When to call `step` again without a wake; none unless an error came and sound may still follow.
    std::optional<Clock::Instant> deadline() const { return m_end.deadline(); }

    /// Something was decoded.
    bool started() const { return m_pipeline->started(); }
    /// The file has no sound that can be decoded.
    bool isEmpty();
    /// Reading stopped early, so the file may have more sound.
    bool endedEarly() const { return m_pipeline->failed(); }

private:
    void open();
    Step seek();
    GstSamplePtr pull();
    bool isMisplaced(const SoundPiece& piece) const;

    SourceFile m_file;
    std::function<void()> m_wake;
    std::unique_ptr<DecodePipeline> m_pipeline;
    EndOfStream m_end;
    bool m_seekPending = false;
    bool m_sought = false; ///< and nothing was read since
    Nanoseconds m_from = 0;
    Nanoseconds m_beginning = -1; ///< of the file's sound; negative until that was read
};

} // namespace stackreel
