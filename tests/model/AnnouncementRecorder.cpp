#include "tests/model/AnnouncementRecorder.h"

#include "model/AppModel.h"
#include "tests/support/fakes/FakePreviewPlayer.h"

#include <gtest/gtest.h>

#include <utility>

namespace stackreel
{

namespace
{

// The overloads below hide those of the namespace, so make them visible again.
using stackreel::described;

std::string described(bool value)
{
    return value ? "true" : "false";
}

std::string described(const Phase& phase)
{
    constexpr const char* names[] = {"empty", "preparing", "ready", "exporting", "complete", "failed"};
    std::string text = names[static_cast<int>(phase.kind())];
    if (phase.kind() >= Phase::Kind::complete)
        text += ": " + phase.message(std::nullopt);
    return text;
}

std::string described(const MediaInfo& media)
{
    return std::to_string(media.width) + " × " + std::to_string(media.height) + ", " +
           described(media.duration) + " s";
}

std::string described(const CropRegion& region)
{
    return described(region.x) + " " + described(region.y) + " " + described(region.width) + " " +
           described(region.height);
}

std::string described(const ExportSettings& settings)
{
    return std::string(rawValue(settings.aspect)) + " " + std::to_string(settings.customWidth) + " × " +
           std::to_string(settings.customHeight) + (settings.includeAudio ? " with sound" : " silent");
}

} // namespace

AnnouncementRecorder::AnnouncementRecorder(const AppModel& model, std::shared_ptr<Journal> journal)
    : m_model(model), m_journal(std::move(journal))
{
    connect(&model, &AppModel::objectWillChange, this, [this] { ++m_announced; });
    connectProperties();
}

AnnouncementRecorder::~AnnouncementRecorder()
{
    EXPECT_EQ(m_announced, 0) << "a change was announced but did not happen";
}

void AnnouncementRecorder::record(void (AppModel::*changed)(), const std::string& property,
                                  const Value& value)
{
    connect(&m_model, changed, this, [this, property, value] {
        EXPECT_EQ(std::exchange(m_announced, 0), 1) << property;
        m_journal->note(property + " " + value());
    });
}

void AnnouncementRecorder::connectProperties()
{
    const AppModel& model = m_model;
    record(&AppModel::phaseChanged, "phase", [&] { return described(model.phase()); });
    record(&AppModel::sourceURLChanged, "sourceURL",
           [&] { return model.sourceURL() ? model.sourceURL()->string() : "none"; });
    record(&AppModel::mediaInfoChanged, "mediaInfo",
           [&] { return model.mediaInfo() ? described(*model.mediaInfo()) : "none"; });
    record(&AppModel::playerChanged, "player", [&] {
        const auto player = std::dynamic_pointer_cast<FakePreviewPlayer>(model.player());
        return player ? player->name() : "none";
    });
    record(&AppModel::timelineThumbnailsChanged, "timelineThumbnails",
           [&] { return std::to_string(model.timelineThumbnails().size()); });
    record(&AppModel::currentTimeChanged, "currentTime", [&] { return described(model.currentTime()); });
    record(&AppModel::trimStartChanged, "trimStart", [&] { return described(model.trimStart()); });
    record(&AppModel::trimEndChanged, "trimEnd", [&] { return described(model.trimEnd()); });
    record(&AppModel::previewPlayingChanged, "previewPlaying",
           [&] { return described(model.previewPlaying()); });
    record(&AppModel::topRegionChanged, "topRegion", [&] { return described(model.topRegion()); });
    record(&AppModel::bottomRegionChanged, "bottomRegion", [&] { return described(model.bottomRegion()); });
    record(&AppModel::settingsChanged, "settings", [&] { return described(model.settings()); });
    record(&AppModel::selectedCropChanged, "selectedCrop",
           [&] { return std::to_string(model.selectedCrop()); });
    record(&AppModel::previewMutedChanged, "previewMuted", [&] { return described(model.previewMuted()); });
}

} // namespace stackreel
