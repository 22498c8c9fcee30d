#include "tests/campaign/SoakSession.h"

#include "desktop/panels/OpenPanel.h"
#include "desktop/panels/SavePanel.h"
#include "model/TaskHandle.h"
#include "player/GStreamerPlayer.h"
#include "player/GStreamerStills.h"
#include "tests/support/Awaited.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace stackreel
{

using namespace std::chrono_literals;

class AnsweringPanel : public OpenPanel, public SavePanel
{
public:
    void begin(const OpenPanelRequest&, PanelCompletion completion) override { completion(answer()); }
    void begin(const SavePanelRequest&, PanelCompletion completion) override { completion(answer()); }

    std::filesystem::path file;

private:
    PanelResponse answer() const { return {.accepted = true, .url = file}; }
};

namespace
{

/// A sink that keeps real time and needs no sound device.
GstElementPtr makeSilentSink()
{
    GstElementPtr sink = makeElement("fakesink");
    g_object_set(sink.get(), "sync", TRUE, nullptr);
    return sink;
}

} // namespace

void CountingOutput::present(VideoFrame frame) noexcept
{
    std::uint64_t sum = 0;
    for (int y = 0; y < frame.height; ++y)
        for (int x = 0; x < frame.width * 4; x += 64)
            sum += std::to_integer<std::uint64_t>(frame.pixels[y * frame.bytesPerLine + x]);
    m_checksum += sum;
    ++m_frames;
}

SoakSession::SoakSession(std::vector<std::filesystem::path> clips, std::filesystem::path folder,
                         std::uint32_t seed)
    : m_clips(std::move(clips)),
      m_destination(std::move(folder) / "exported.mp4"),
      m_random(seed),
      m_panel(std::make_shared<AnsweringPanel>()),
      m_model(std::make_unique<AppModel>(
          ModelServices::system([] { return std::make_shared<GStreamerPlayer>(makeSilentSink); },
                                std::make_shared<GStreamerStills>(), m_panel, m_panel)))
{
    QObject::connect(m_model.get(), &AppModel::playerChanged, [this] {
        if (m_model->player())
            m_model->player()->setVideoOutput(m_output);
    });
    QObject::connect(m_model.get(), &AppModel::phaseChanged, [this] { notePhase(); });
    QObject::connect(m_model.get(), &AppModel::exportOfReplacedSourceEnded, [this](const QString& message) {
        m_counts.failedExports += message.contains(QLatin1String("was not exported")) &&
                                  !message.endsWith(QLatin1String("The export was cancelled."));
    });
}

SoakSession::~SoakSession() = default;

void SoakSession::loadEach()
{
    for (const auto& clip : m_clips) {
        load(clip);
        judgeLoad(clip);
    }
}

void SoakSession::use(std::chrono::milliseconds duration)
{
    const auto end = std::chrono::steady_clock::now() + duration;
    while (std::chrono::steady_clock::now() < end)
        performAction();
}

void SoakSession::returnToFirstClip()
{
    const bool ended = eventually([this] { return m_model->unfinishedExports().empty(); });
    m_model->setPreviewMuted(true);
    m_model->setSettings({});
    load(m_clips.front());
    if (!ended || !finishLoad() || m_model->phase() != Phase::ready())
        throw std::runtime_error("the first clip is not ready: " + m_model->phaseMessage());
    m_model->player()->setVideoSize(640, 360);
    if (!eventually([this] { return !m_model->timelineThumbnails().empty(); }))
        throw std::runtime_error("the first clip has no thumbnails");
    // A player closes its decoder after three seconds of a range that it keeps in memory.
    run(5s);
}

void SoakSession::performAction()
{
    const int choice = below(100);
    if (choice < 30)
        scrub();
    else if (choice < 45)
        trim();
    else if (choice < 65)
        change();
    else if (choice < 80)
        loadAny();
    else if (choice < 83)
        exportRange();
    else
        run(std::chrono::milliseconds(below(1500)));
    run(std::chrono::milliseconds(below(200)));
}

void SoakSession::load(const std::filesystem::path& clip)
{
    m_panel->file = clip;
    m_model->chooseSource();
    ++m_counts.loads;
    eventually([&] { return m_model->sourceURL() == clip && m_model->phase() == Phase::preparing(); });
}

/// In one of four cases does not wait for the load.
void SoakSession::loadAny()
{
    const auto& clip = m_clips[static_cast<std::size_t>(below(static_cast<int>(m_clips.size())))];
    load(clip);
    if (below(4) == 0)
        run(std::chrono::milliseconds(below(300)));
    else
        judgeLoad(clip);
}

/// Waits for the load, and counts it if it failed or should have failed.
void SoakSession::judgeLoad(const std::filesystem::path& clip)
{
    const bool hasFailed = !finishLoad() || m_model->phase().kind() == Phase::Kind::failed;
    m_counts.failedLoads += hasFailed;
    m_counts.wrongLoads += hasFailed != (clip == m_clips.back());
}

/// Counts exports that fail while their source is still loaded.
void SoakSession::notePhase()
{
    const auto before = std::exchange(m_phase, m_model->phase().kind());
    m_counts.failedExports += before == Phase::Kind::exporting && m_phase == Phase::Kind::failed;
}

void SoakSession::scrub()
{
    m_model->beginTimelineInteraction();
    for (int step = below(30); step >= 0; --step, ++m_counts.seeks) {
        m_model->seekPreview(timeInClip());
        run(std::chrono::milliseconds(below(30)));
    }
    m_model->endTimelineInteraction(false);
}

void SoakSession::trim()
{
    m_model->beginTimelineInteraction();
    for (int step = below(10); step >= 0; --step) {
        if (below(2) == 0)
            m_model->updateTrimStart(timeInClip());
        else
            m_model->updateTrimEnd(timeInClip());
        run(std::chrono::milliseconds(below(20)));
    }
    m_model->endTimelineInteraction(true);
    ++m_counts.trims;
}

void SoakSession::change()
{
    switch (below(5)) {
    case 0:
        return m_model->togglePreviewPlayback();
    case 1:
        return m_model->setPreviewMuted(!m_model->previewMuted());
    case 2:
        return m_model->swapCrops();
    case 3:
        m_model->setSettings({.aspect = OutputAspect::custom, .customWidth = 160, .customHeight = 284});
        return m_model->adaptRegionsToCurrentOutput();
    default:
        if (m_model->player())
            m_model->player()->setVideoSize(320 + below(480), 180 + below(270));
    }
}

/// Waits for the end of most exports, cancels some, and goes on during the others.
void SoakSession::exportRange()
{
    if (m_model->phase() != Phase::ready() && m_model->phase().kind() != Phase::Kind::complete)
        return;
    m_panel->file = m_destination;
    m_model->chooseExportDestination();
    const bool begun = eventually(
        [this] { return m_model->exportTask() || m_model->phase().kind() == Phase::Kind::failed; });
    if (!begun)
        throw std::runtime_error("an export has not begun");
    ++m_counts.exports;
    const auto task = m_model->exportTask();
    const int choice = below(4);
    if (choice == 0 || !task)
        return;
    if (choice == 1) {
        run(std::chrono::milliseconds(below(400)));
        task->cancel();
        ++m_counts.cancelledExports;
    }
    if (!eventually([&] { return task->hasEnded(); }))
        throw std::runtime_error("an export has not ended");
}

void SoakSession::run(std::chrono::milliseconds duration)
{
    eventually([] { return false; }, duration);
}

bool SoakSession::finishLoad()
{
    return eventually([this] { return m_model->phase() != Phase::preparing(); });
}

/// A number from 0 to `limit` − 1.
int SoakSession::below(int limit)
{
    return std::uniform_int_distribution<int>(0, limit - 1)(m_random);
}

double SoakSession::timeInClip()
{
    const double length = m_model->mediaInfo() ? m_model->mediaInfo()->duration : 1;
    return std::uniform_real_distribution<double>(0, std::max(length, 0.1))(m_random);
}

} // namespace stackreel
