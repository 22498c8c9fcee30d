#pragma once

#include "player/sound/SoundReader.h"
#include "player/sound/SoundRuns.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace stackreel
{

/// Unrolls the sound of a repeated range into one endless sequence of pieces with due times, cut to the
/// sample at the range's ends. The sound of a run is kept and replayed if it is not too long and reading did
/// not end early. One thread; nothing else uses the reader meanwhile.
class SoundFeeder
{
public:
    enum class Step {
        waiting, ///< nothing can be done until the reader wakes or another run is known, or at `deadline`
        working, ///< call again at once
        piece,   ///< the next piece
    };

    struct DuePiece {
        SoundPiece piece;
        Nanoseconds due = 0; ///< on the line of played time
    };

    static constexpr std::size_t usualBudget = (16U << 20) / sizeof(std::int16_t);

    /// At most `budget` samples are kept.
    explicit SoundFeeder(SoundReader& reader, std::size_t budget = usualBudget)
        : m_reader(reader), m_budget(budget)
    {
    }

    /// Continues with the sound that is due at a played time.
    void beginAt(const SoundRuns& runs, Nanoseconds played);
    /// Does a small piece of work. On `Step::piece` the result is in `next`. The runs are those of `beginAt`,
    /// and more that became known since.
    Step step(const SoundRuns& runs, DuePiece& next);
    /// As the reader's.
    std::optional<Clock::Instant> deadline() const { return m_reader.deadline(); }

private:
    void enter(const SoundRuns::Run& run, Nanoseconds position, const LoopRange& range);
    Step leave(const SoundRuns& runs);
    SoundReader::Step read(SoundPiece& piece);
    void alignToPrevious(SoundPiece& piece) const;
    void keepRun();

    SoundReader& m_reader;
    const std::size_t m_budget;
    std::optional<SoundRuns::Run> m_run;
    Nanoseconds m_position = 0; ///< where the next piece begins
    bool m_delivered = false;   ///< a piece of this run was delivered
    bool m_readToEnd = false;   ///< the reader has no more for this run
    bool m_collecting = false;  ///< this run's pieces are being kept, from the range's start on
    bool m_complete = false;    ///< the kept pieces are all of the range
    std::vector<SoundPiece> m_kept;
    std::size_t m_keptSamples = 0;
    int m_incompleteRuns = 0;              ///< runs that ended early and would have been kept
    std::optional<std::size_t> m_replayed; ///< kept pieces replayed in this run
};

} // namespace stackreel
