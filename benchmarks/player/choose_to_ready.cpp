/// Chooses a file in the model, with the real player and tools. Prints the time until the phase was ready,
/// until the preview showed its first frame, and until the thumbnails were there.
///
/// choose_to_ready FILE [without-thumbnails]

#include "benchmarks/player/Measuring.h"
#include "benchmarks/player/RecordingOutput.h"
#include "desktop/panels/OpenPanel.h"
#include "desktop/panels/SavePanel.h"
#include "model/AppModel.h"
#include "player/GStreamerPlayer.h"
#include "player/GStreamerStills.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

using namespace stackreel;

namespace
{

/// A panel that chooses its file at once.
class ChoosingPanel : public OpenPanel
{
public:
    explicit ChoosingPanel(std::filesystem::path file) : m_file(std::move(file)) {}
    void begin(const OpenPanelRequest&, PanelCompletion completion) override
    {
        completion({.accepted = true, .url = m_file});
    }

private:
    std::filesystem::path m_file;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "choose_to_ready FILE [without-thumbnails]\n");
        return 2;
    }
    auto services = ModelServices::system(
        [] { return std::make_shared<GStreamerPlayer>(); }, std::make_shared<GStreamerStills>(),
        std::make_shared<ChoosingPanel>(std::filesystem::absolute(argv[1])), nullptr);
    if (argc > 2)
        services.timelineThumbnails = [](auto&&...) -> QCoro::Task<std::vector<VideoFrame>> {
            co_return std::vector<VideoFrame>(12);
        };
    AppModel model(std::move(services));
    const auto output = std::make_shared<RecordingOutput>();
    const auto before = std::chrono::steady_clock::now();
    double ready = 0;
    QObject::connect(&model, &AppModel::phaseChanged, [&] {
        if (model.phase() == Phase::ready())
            ready = milliseconds(std::chrono::steady_clock::now() - before);
        else if (model.phase().kind() == Phase::Kind::failed)
            QCoreApplication::exit(1);
    });
    QObject::connect(&model, &AppModel::playerChanged, [&] {
        if (model.player())
            model.player()->setVideoOutput(output);
    });
    double thumbnails = 0;
    QObject::connect(&model, &AppModel::timelineThumbnailsChanged, [&] {
        if (model.timelineThumbnails().empty())
            return;
        thumbnails = milliseconds(std::chrono::steady_clock::now() - before);
        QCoreApplication::exit(0);
    });
    model.chooseSource();
    if (application.exec() != 0) {
        std::fprintf(stderr, "%s\n", model.phaseMessage().c_str());
        return 1;
    }
    output->waitFor([](const auto& shown) { return !shown.empty(); }, std::chrono::minutes(1));
    std::printf("ready=%.0f first=%.0f thumbnails=%.0f peak=%.0f\n", ready,
                milliseconds(output->take().front().at - before), thumbnails, peakMemory());
}
