#pragma once

#include "tests/model/walk/Expected.h"

#include <string>
#include <vector>

namespace stackreel
{

class AppModel;
class FakeServices;

/// The invariants that a walk checks, with the names that are printed when one is violated.
///
/// After each operation:
/// - announced: `objectWillChange` is emitted once before each change (`AnnouncementRecorder`).
/// - transition: The phase changes only as `allowedTransition` allows.
/// - times: 0 ≤ trimStart ≤ currentTime ≤ trimEnd; the trim has its minimum length, or that of the clip.
/// - regions: Both regions are inside the frame; the selection is 0 or 1.
/// - phase and media: `empty` and `preparing` have no media, player or thumbnails; `ready`, `exporting` and
///   `complete` have a source, media and a player; `failed` has media and a player, or neither.
/// - playing: `previewPlaying` is true if the player plays; no other player plays or is observed.
/// - muted: The player is muted if `previewMuted` is true.
/// - one export: At most one export runs.
/// - saved: `complete` names a whole file.
///
/// When the queued calls of the main thread have run:
/// - source: The source is the one that was chosen last; media and thumbnails belong to it.
/// - phase: The phase is that of the last load or export of this source.
/// - loop: There is one loop: on the player, of the preview of this source, over the trim range.
/// - superseded: A superseded load is asked to stop and starts no further calls.
/// - late end: The end of a load, export, drag or tick of another source changes nothing.
/// - turn: Exports run in the order of their start, each with the state at its start.
/// - stopped: Only the user, a later export of the same source, or quitting stops an export.
/// - task: `exportTask` is the export that the window shows; `unfinishedExports` and `unfinishedLoads` list
///   all, and `unfinishedExportsChanged` is emitted when the list has to be read again.
/// - background: `backgroundExports` lists the unfinished exports that the window does not show, in the order
///   of their start, and `backgroundExportsChanged` is emitted when the list has to be read again.
///
/// At the end of the walk:
/// - quit: Nothing runs, and every call was asked to stop.
class ModelInvariants
{
public:
    ModelInvariants(const AppModel& model, const FakeServices& services, Expected& expected)
        : m_model(model), m_services(services), m_expected(expected)
    {
    }

    /// The violated invariants, each as "name: what was seen".
    std::vector<std::string> brokenAnyTime() const;
    /// `dragging` is whether a trim handle of this source is being dragged.
    std::vector<std::string> brokenWithEmptyQueue(bool dragging) const;
    static bool allowedTransition(Phase::Kind from, Phase::Kind to);

private:
    const AppModel& m_model;
    const FakeServices& m_services;
    Expected& m_expected;
};

} // namespace stackreel
