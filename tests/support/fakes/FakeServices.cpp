#include "tests/support/fakes/FakeServices.h"

namespace stackreel
{

MediaInfo landscapeClip(double duration)
{
    return {.width = 1920,
            .height = 1080,
            .rotation = 0,
            .duration = duration,
            .videoCodec = "h264",
            .audioCodec = "aac"};
}

template <typename T>
QCoro::Task<T> FakeServices::call(Calls<T>& calls, const std::string& service, const std::string& arguments,
                                  std::stop_token stop)
{
    const std::string name = service + " " + std::to_string(calls.size() + 1);
    journal->note(name + ": " + arguments);
    return calls.emplace_back(journal, name, arguments, std::move(stop)).task().task();
}

QCoro::Task<FakeServices::Path> FakeServices::exportInTurn(ExportRequest request, WaitForTurn waitForTurn,
                                                           std::stop_token stop)
{
    const auto turn = co_await waitForTurn();
    exportRequests.push_back(request);
    const std::string arguments = request.input.string() + " to " + request.output.string();
    co_return co_await call(exports, "export", arguments, std::move(stop));
}

ModelServices FakeServices::services()
{
    return {
        .inspect =
            [this](const Path& source, std::stop_token stop) {
                return call(inspections, "inspect", source.string(), std::move(stop));
            },
        .previewSource =
            [this](const Path& source, std::stop_token stop) {
                return call(previews, "preview", source.string(), std::move(stop));
            },
        .timelineThumbnails =
            [this](const Path& file, double duration, int count, std::stop_token stop) {
                const std::string arguments =
                    file.string() + ", " + described(duration) + " s, " + std::to_string(count);
                return call(thumbnails, "thumbnails", arguments, std::move(stop));
            },
        .exportSource =
            [this](const ExportRequest& request, const WaitForTurn& waitForTurn, std::stop_token stop) {
                return exportInTurn(request, waitForTurn, std::move(stop));
            },
        .makePlayer = [made = players] { return made->make(); },
        .openPanel = openPanel,
        .savePanel = savePanel,
    };
}

} // namespace stackreel
