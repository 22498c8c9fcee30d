#pragma once

#include "model/AppModel.h"
#include "tests/model/AnnouncementRecorder.h"
#include "tests/model/walk/ModelInvariants.h"
#include "tests/model/walk/Random.h"
#include "tests/support/fakes/FakeServices.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace stackreel
{

/// One run of the program: a model with fake services, random operations on it, and its end. The operations
/// are those that a user can do in the window. The calls of services end in any order, late or never.
/// Exported files are written to `folder`, which must exist.
class ModelWalk
{
public:
    ModelWalk(Random& random, const std::filesystem::path& folder);
    ~ModelWalk();
    ModelWalk(const ModelWalk&) = delete;
    ModelWalk& operator=(const ModelWalk&) = delete;

    /// Carries out a random operation and checks the invariants.
    void step();
    /// Ends the program as `Shutdown` does, or destroys the model while calls are still pending.
    void end();

    /// The violated invariants so far, each as "name: what was seen".
    const std::vector<std::string>& broken() const { return m_broken; }
    /// The operations so far, one per line.
    const std::string& operations() const { return m_operations; }

private:
    struct Operation {
        std::size_t weight;
        void (ModelWalk::*run)();
    };
    static const std::vector<Operation>& operationTable();

    // Sources and the event queue (ModelWalkWork.cpp).
    void showOpenPanel();
    void answerOpenPanel();
    void endInspection();
    void endPreview();
    void endThumbnails();
    void beginLoad();
    void runQueue();
    void expectSilence(bool late, const std::function<void()>& operation);
    template <typename T>
    std::size_t randomPending(const FakeServices::Calls<T>& calls);

    // Exports (ModelWalkExports.cpp).
    void showSavePanel();
    void answerSavePanel();
    void endExport();
    void cancelExport();
    void cancelBackgroundExport();
    void beginExports();
    void adoptCalls();
    void takeNextTurn();

    // Edits (ModelWalkEdits.cpp).
    void grabTimeline();
    void dragTimeline();
    void releaseTimeline();
    void hideTimeline();
    void stepTimeline();
    void togglePlayback();
    void mute();
    void tick();
    void moveCrop();
    void selectCrop();
    void swapCrops();
    void chooseAspect();
    void typeSize();
    double randomTime();

    void check();
    void note(const std::string& operation) { m_operations += operation + "\n"; }
    void quit();
    /// Ends all pending calls with `CancellationError`. Returns whether each of them was asked to stop.
    template <typename T>
    static bool endAll(FakeServices::Calls<T>& calls);
    /// How often the queue is processed, because a queued call may queue another one.
    static constexpr int queueRounds = 6;

    Random& m_random;
    std::filesystem::path m_folder;
    FakeServices m_services;
    std::unique_ptr<AppModel> m_model;
    std::optional<AnnouncementRecorder> m_recorder;
    Expected m_expected;
    ModelInvariants m_invariants;
    Phase::Kind m_lastPhase = Phase::Kind::empty;

    bool m_openPanelShown = false;
    std::optional<unsigned> m_savePanelSource; ///< the number of the source for which the save panel is shown
    std::optional<std::filesystem::path> m_chosen;     ///< the chosen file whose load is queued
    std::vector<std::filesystem::path> m_destinations; ///< of queued exports of the current source
    std::optional<unsigned> m_dragSource;
    char m_grabbed = ' '; ///< 's' or 'e' for a trim handle, 'p' for the playhead

    bool m_knownUnfinished = false; ///< whether an export is unfinished, as `unfinishedExportsChanged` tells
    std::vector<BackgroundExport> m_knownBackground; ///< as `backgroundExportsChanged` made it known
    std::vector<std::string> m_broken;
    std::string m_operations;
};

template <typename T>
std::size_t ModelWalk::randomPending(const FakeServices::Calls<T>& calls)
{
    std::vector<std::size_t> pending;
    for (std::size_t index = 0; index < calls.size(); ++index)
        if (!calls[index].hasEnded())
            pending.push_back(index);
    return pending.empty() ? noCall : pending[m_random.below(pending.size())];
}

} // namespace stackreel
