#include "model/ModelServices.h"

#include "media/MediaPipeline.h"
#include "media/MediaProbe.h"
#include "model/FileExport.h"

namespace stackreel
{

ModelServices ModelServices::system(MakePlayer makePlayer, std::shared_ptr<Stills> stills,
                                    std::shared_ptr<OpenPanel> openPanel,
                                    std::shared_ptr<SavePanel> savePanel)
{
    return {
        .inspect =
            [](Path source, std::stop_token stop) {
                return MediaProbe::inspect(std::move(source), std::move(stop));
            },
        .previewSource =
            [stills](Path source, std::stop_token stop) {
                return MediaPipeline::previewSource(std::move(source), stills, std::move(stop));
            },
        .timelineThumbnails =
            [stills](Path file, double duration, int count, std::stop_token stop) {
                return MediaPipeline::timelineThumbnails(std::move(file), duration, count, stills,
                                                         std::move(stop));
            },
        .exportSource =
            [](ExportRequest request, WaitForTurn waitForTurn, std::stop_token stop) {
                return FileExport::replace(std::move(request), std::move(waitForTurn), std::move(stop));
            },
        .makePlayer = std::move(makePlayer),
        .openPanel = std::move(openPanel),
        .savePanel = std::move(savePanel),
    };
}

} // namespace stackreel
