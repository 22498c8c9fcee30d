#pragma once

#include "model/ModelServices.h"
#include "tests/support/fakes/FakePanels.h"
#include "tests/support/fakes/FakePlayers.h"
#include "tests/support/fakes/Journal.h"
#include "tests/support/fakes/ManualTask.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace stackreel
{

/// The facts of a landscape clip with sound; `duration` in seconds.
MediaInfo landscapeClip(double duration);

/// One call of a fake service. It ends when the test completes or fails its task. A cancellation is written
/// to the journal ("cancel export 1").
template <typename T>
class FakeCall
{
public:
    FakeCall(std::shared_ptr<Journal> journal, std::string name, std::string arguments, std::stop_token stop)
        : m_arguments(std::move(arguments)),
          m_stop(stop),
          m_cancelled(stop, Note{std::move(journal), "cancel " + std::move(name)})
    {
    }

    /// The arguments as text, as they are in the journal: "/clips/a.mov" for `inspect`.
    const std::string& arguments() const { return m_arguments; }
    ManualTask<T>& task() { return m_task; }
    bool isCancelled() const { return m_stop.stop_requested(); }
    bool hasEnded() const { return m_task.hasEnded(); }

private:
    struct Note {
        std::shared_ptr<Journal> journal;
        std::string line;
        void operator()() const { journal->note(line); }
    };

    std::string m_arguments;
    std::stop_token m_stop;
    std::stop_callback<Note> m_cancelled;
    ManualTask<T> m_task;
};

/// Fakes of all services of a model: calls that stay pending until the test completes them, a fake player and
/// fake panels, and one journal for all of them. Must outlive the model. The destructor makes all pending
/// calls fail.
class FakeServices
{
public:
    using Path = std::filesystem::path;
    template <typename T>
    using Calls = std::deque<FakeCall<T>>;

    /// The services; may be passed to several models.
    ModelServices services();

    const std::shared_ptr<Journal> journal = std::make_shared<Journal>();
    const std::shared_ptr<FakePlayers> players = std::make_shared<FakePlayers>(journal);
    const std::shared_ptr<FakeOpenPanel> openPanel = std::make_shared<FakeOpenPanel>(journal, "open panel");
    const std::shared_ptr<FakeSavePanel> savePanel = std::make_shared<FakeSavePanel>(journal, "save panel");

    Calls<MediaInfo> inspections;
    Calls<Path> previews;
    Calls<std::vector<VideoFrame>> thumbnails;
    Calls<Path> exports;
    /// The requests of the calls in `exports`, in the same order.
    std::vector<ExportRequest> exportRequests;

private:
    QCoro::Task<Path> exportInTurn(ExportRequest request, WaitForTurn waitForTurn, std::stop_token stop);
    template <typename T>
    QCoro::Task<T> call(Calls<T>& calls, const std::string& service, const std::string& arguments,
                        std::stop_token stop);
};

} // namespace stackreel
