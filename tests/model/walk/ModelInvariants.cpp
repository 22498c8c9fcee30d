#include "tests/model/walk/ModelInvariants.h"

#include "model/AppModel.h"
#include "model/TaskHandle.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/fakes/FakeServices.h"

#include <algorithm>

namespace stackreel
{

namespace
{

using Kind = Phase::Kind;

constexpr double rounding = 1e-9;

/// Collects the violated invariants.
class Broken
{
public:
    void unless(bool holds, const char* rule, const std::string& seen = {})
    {
        if (!holds)
            m_lines.push_back(std::string(rule) + ": " + seen);
    }
    std::vector<std::string> lines() && { return std::move(m_lines); }

private:
    std::vector<std::string> m_lines;
};

bool insideFrame(const CropRegion& region)
{
    const auto fits = [](double start, double length) {
        return length >= 0.06 - rounding && start >= -rounding && start + length <= 1 + rounding;
    };
    return fits(region.x, region.width) && fits(region.y, region.height);
}

void checkTimes(const AppModel& model, Broken& broken)
{
    const double start = model.trimStart();
    const double end = model.trimEnd();
    const double now = model.currentTime();
    const std::string seen = described(start) + " " + described(now) + " " + described(end);
    broken.unless(0 <= start && start <= now && now <= end, "times", seen);
    if (!model.mediaInfo())
        return;
    const double duration = model.mediaInfo()->duration;
    const double minimum = std::min(0.25, std::max(0.05, duration * 0.5));
    broken.unless(end - start >= std::min(minimum, duration) - rounding, "times", "too short: " + seen);
    broken.unless(end <= std::max(duration, start + minimum) + rounding, "times", "too long: " + seen);
}

void checkMedia(const AppModel& model, Broken& broken)
{
    const Kind kind = model.phase().kind();
    const bool media = model.mediaInfo().has_value();
    const bool player = model.player() != nullptr;
    const std::string seen = "phase " + std::to_string(static_cast<int>(kind)) + (media ? ", media" : "") +
                             (player ? ", player" : "");
    if (kind == Kind::failed) {
        broken.unless(media == player, "phase and media", seen);
        return;
    }
    const bool wanted = kind != Kind::empty && kind != Kind::preparing;
    broken.unless(media == wanted && player == wanted, "phase and media", seen);
    broken.unless(kind == Kind::empty || model.sourceURL(), "phase and media", "no source");
    broken.unless(wanted || model.timelineThumbnails().empty(), "phase and media", "thumbnails");
}

void checkPlayers(const AppModel& model, const FakeServices& services, Broken& broken)
{
    broken.unless(model.player() || !model.previewPlaying(), "playing", "without a player");
    for (const auto& player : services.players->all()) {
        const bool current = player == model.player();
        broken.unless(player->isPlaying() == (current && model.previewPlaying()), "playing", player->name());
        broken.unless(player->isObserved() == current, "playing", "observer of " + player->name());
        broken.unless(!current || player->isMuted() == model.previewMuted(), "muted", player->name());
    }
}

template <typename Calls>
std::size_t pending(const Calls& calls)
{
    return static_cast<std::size_t>(
        std::count_if(calls.begin(), calls.end(), [](const auto& call) { return !call.hasEnded(); }));
}

void checkLoop(const AppModel& model, const FakeServices& services, const Expected& expected, bool dragging,
               Broken& broken)
{
    std::vector<const FakePreviewPlayer*> open;
    for (const auto& player : services.players->all())
        if (player->opened())
            open.push_back(player.get());
    broken.unless(open.size() == (expected.isLoaded() ? 1U : 0U), "loop", std::to_string(open.size()));
    if (open.size() != 1 || !expected.isLoaded())
        return;
    const auto& [file, opened] = *open.front()->opened();
    broken.unless(open.front() == model.player().get(), "loop", "on another player");
    broken.unless(file == expected.previewFile, "loop", "of " + file.string());
    const double minimum = std::min(0.25, std::max(0.05, expected.media->duration * 0.5));
    const MediaTimeRange range = {
        .start = MediaTime::fromSeconds(model.trimStart()),
        .duration = MediaTime::fromSeconds(std::max(model.trimEnd() - model.trimStart(), minimum))};
    broken.unless(dragging || opened == range, "loop", "over another range than the trim");
}

void checkLoads(const AppModel& model, const FakeServices& services, const Expected& expected, Broken& broken)
{
    const auto check = [&](const auto& calls, std::size_t current, const char* name) {
        for (std::size_t index = 0; index < calls.size(); ++index)
            broken.unless(calls[index].hasEnded() || calls[index].isCancelled() == (index != current),
                          "superseded", name + std::to_string(index + 1));
    };
    check(services.inspections, expected.inspection, "inspect ");
    check(services.previews, expected.preview, "preview ");
    const std::size_t loads = pending(services.inspections) + pending(services.previews);
    broken.unless(model.unfinishedLoads().size() == loads, "task",
                  std::to_string(model.unfinishedLoads().size()) + " loads");
}

void checkBackground(const AppModel& model, Expected& expected, Broken& broken)
{
    std::vector<std::filesystem::path> wanted;
    for (const ExpectedExport& item : expected.exports)
        if (!item.ended && &item != expected.shownExport())
            wanted.push_back(item.request.output);
    auto tasks = model.unfinishedExports();
    std::erase(tasks, model.exportTask());
    const auto listed = model.backgroundExports();
    const auto sameFile = [](const auto& item, const auto& file) { return item.destination == file; };
    const auto sameTask = [](const auto& item, const auto& task) { return item.task == task; };
    const std::string seen = std::to_string(listed.size()) + " of " + std::to_string(wanted.size());
    broken.unless(std::equal(listed.begin(), listed.end(), wanted.begin(), wanted.end(), sameFile),
                  "background", seen);
    broken.unless(std::equal(listed.begin(), listed.end(), tasks.begin(), tasks.end(), sameTask),
                  "background", "other tasks: " + seen);
}

void checkExports(const AppModel& model, const FakeServices& services, Expected& expected, Broken& broken)
{
    std::size_t unfinished = 0;
    for (const ExpectedExport& item : expected.exports) {
        unfinished += item.ended ? 0 : 1;
        if (item.call == noCall || item.ended)
            continue;
        broken.unless(services.exports[item.call].isCancelled() == item.stopRequested, "stopped",
                      "export " + std::to_string(item.call + 1));
    }
    broken.unless(model.unfinishedExports().size() == unfinished, "task",
                  std::to_string(model.unfinishedExports().size()) + " unfinished of " +
                      std::to_string(unfinished));
    const bool shown = expected.shownExport() != nullptr;
    broken.unless((model.exportTask() != nullptr) == shown, "task", shown ? "none" : "left over");
}

} // namespace

bool ModelInvariants::allowedTransition(Kind from, Kind to)
{
    switch (to) {
    case Kind::empty:
        return false;
    case Kind::preparing: // a source was chosen
        return true;
    case Kind::ready: // loaded; export cancelled
        return from == Kind::preparing || from == Kind::exporting;
    case Kind::exporting: // also from a panel that was open when an earlier export began or failed
        return from != Kind::empty && from != Kind::preparing;
    case Kind::complete:
        return from == Kind::exporting;
    case Kind::failed:
        return from == Kind::preparing || from == Kind::exporting;
    }
    return false;
}

std::vector<std::string> ModelInvariants::brokenAnyTime() const
{
    Broken broken;
    checkTimes(m_model, broken);
    broken.unless(insideFrame(m_model.topRegion()) && insideFrame(m_model.bottomRegion()), "regions");
    broken.unless(m_model.selectedCrop() == 0 || m_model.selectedCrop() == 1, "regions", "selection");
    checkMedia(m_model, broken);
    checkPlayers(m_model, m_services, broken);
    const std::size_t running = pending(m_services.exports);
    broken.unless(running <= 1, "one export", std::to_string(running) + " run");
    if (m_model.phase().kind() == Kind::complete) {
        const auto file = m_expected.exports.back().request.output;
        broken.unless(m_model.phase() == Phase::complete(file) && std::filesystem::exists(file) &&
                          contentOf(file) == "whole",
                      "saved", m_model.phaseMessage());
    }
    return std::move(broken).lines();
}

std::vector<std::string> ModelInvariants::brokenWithEmptyQueue(bool dragging) const
{
    Broken broken;
    broken.unless(m_model.sourceURL() == m_expected.file, "source");
    broken.unless(m_model.mediaInfo() == m_expected.media, "source", "media of another");
    for (const VideoFrame& image : m_model.timelineThumbnails())
        broken.unless(m_expected.media && image.width == m_expected.media->width, "source", "thumbnails");
    broken.unless(m_model.phase() == m_expected.phase, "phase",
                  m_model.phaseMessage() + " instead of " + m_expected.phase.message(m_expected.file));
    checkLoop(m_model, m_services, m_expected, dragging, broken);
    checkLoads(m_model, m_services, m_expected, broken);
    checkExports(m_model, m_services, m_expected, broken);
    checkBackground(m_model, m_expected, broken);
    return std::move(broken).lines();
}

} // namespace stackreel
