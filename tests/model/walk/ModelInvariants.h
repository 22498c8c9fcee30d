#pragma once

#include "tests/model/walk/Expected.h"

#include <string>
#include <vector>

namespace stackreel
{

class AppModel;
class FakeServices;

/// The rules that a walk checks. `Any time` means after each operation; the others are checked when the
/// queued calls of the main thread have run.
///
/// | rule | when | what holds |
/// |---|---|---|
/// | announced | any time | `objectWillChange` comes once before each change (`AnnouncementRecorder`) |
/// | transition | any time | the phase changes only as the table in `allowedTransition` says |
/// | times | any time | 0 ≤ trimStart ≤ currentTime ≤ trimEnd; the trim has its minimum length, or the clip's
/// | | regions | any time | both regions are inside the frame; the selection is 0 or 1 | | phase and media |
/// any time | `empty` and `preparing` have no media, player or thumbnails; `ready`, `exporting` and
/// `complete` have a source, media and a player; `failed` has media and player, or neither | | playing | any
/// time | `previewPlaying` says whether the player plays; no other player plays or is observed | | muted |
/// any time | the player is muted as `previewMuted` says | | one export | any time | at most one export runs
/// | | saved | any time | `complete` names a whole file | | source | queue empty | the source is the one
/// chosen last, and media and thumbnails are its own | | phase | queue empty | the phase is that of the last
/// load or export of this source | | loop | queue empty | one loop, on the player, of this source's preview,
/// over the trim | | superseded | queue empty | a superseded load is asked to stop and begins nothing more |
/// | late end | queue empty | the end of a load, export, drag or tick of another source changes nothing |
/// | turn | queue empty | exports run in the order of their start, each with the state at its start |
/// | stopped | queue empty | only the user, a later export of the same source, or quitting stops an export |
/// | task | queue empty | `exportTask` is the export that the window shows; `unfinishedExports` and
/// `unfinishedLoads` list all, and `unfinishedExportsChanged` tells when to look |
/// | quit | at the end | nothing runs, and every call was asked to stop |
class ModelInvariants
{
public:
    ModelInvariants(const AppModel& model, const FakeServices& services, Expected& expected)
        : m_model(model), m_services(services), m_expected(expected)
    {
    }

    /// The broken rules, each as "rule: what was seen".
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
