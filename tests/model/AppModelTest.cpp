#include "tests/model/ModelTest.h"

#include <functional>

namespace stackreel
{

namespace
{

using AFreshModel = ModelTest;
using PreviewMuted = ModelTest;

/// A published property, a function that assigns a value to it, and a function that checks whether it has
/// that value.
struct Property {
    const char* name;
    void (AppModel::*changed)();
    std::function<void(AppModel&)> assign;
    std::function<bool(const AppModel&)> isAssigned;
};

template <typename Value, typename Getter, typename Setter>
Property property(const char* name, void (AppModel::*changed)(), const Value& value, Getter get, Setter set)
{
    return {name, changed, [=](AppModel& model) { (model.*set)(value); },
            [=](const AppModel& model) { return (model.*get)() == value; }};
}

std::vector<Property> publishedProperties()
{
    const CropRegion region = {.x = 0.1, .y = 0.2, .width = 0.3, .height = 0.4};
    const ExportSettings settings = {.aspect = OutputAspect::feed, .includeAudio = false};
    const std::optional<std::filesystem::path> url = "/clips/a.mov";
    const std::optional<MediaInfo> media = MediaInfo();
    const std::shared_ptr<PreviewPlayer> player =
        std::make_shared<FakePreviewPlayer>(std::make_shared<Journal>(), 9);
    using Model = AppModel;
    return {
        property("phase", &Model::phaseChanged, Phase::ready(), &Model::phase, &Model::setPhase),
        property("sourceURL", &Model::sourceURLChanged, url, &Model::sourceURL, &Model::setSourceURL),
        property("mediaInfo", &Model::mediaInfoChanged, media, &Model::mediaInfo, &Model::setMediaInfo),
        property("player", &Model::playerChanged, player, &Model::player, &Model::setPlayer),
        {"timelineThumbnails", &Model::timelineThumbnailsChanged,
         [](Model& model) { model.setTimelineThumbnails(std::vector<VideoFrame>(3)); },
         [](const Model& model) { return model.timelineThumbnails().size() == 3; }},
        property("currentTime", &Model::currentTimeChanged, 1.5, &Model::currentTime, &Model::setCurrentTime),
        property("trimStart", &Model::trimStartChanged, -2.0, &Model::trimStart, &Model::setTrimStart),
        property("trimEnd", &Model::trimEndChanged, 7.0, &Model::trimEnd, &Model::setTrimEnd),
        property("previewPlaying", &Model::previewPlayingChanged, true, &Model::previewPlaying,
                 &Model::setPreviewPlaying),
        property("topRegion", &Model::topRegionChanged, region, &Model::topRegion, &Model::setTopRegion),
        property("bottomRegion", &Model::bottomRegionChanged, region, &Model::bottomRegion,
                 &Model::setBottomRegion),
        property("settings", &Model::settingsChanged, settings, &Model::settings, &Model::setSettings),
        property("selectedCrop", &Model::selectedCropChanged, 1, &Model::selectedCrop,
                 &Model::setSelectedCrop),
        property("previewMuted", &Model::previewMutedChanged, false, &Model::previewMuted,
                 &Model::setPreviewMuted),
    };
}

} // namespace

TEST_F(AFreshModel, HasTheInitialValues)
{
    EXPECT_EQ(model().phase(), Phase::empty());
    EXPECT_EQ(model().sourceURL(), std::nullopt);
    EXPECT_EQ(model().mediaInfo(), std::nullopt);
    EXPECT_EQ(model().player(), nullptr);
    EXPECT_TRUE(model().timelineThumbnails().empty());
    EXPECT_EQ(model().currentTime(), 0);
    EXPECT_EQ(model().trimStart(), 0);
    EXPECT_EQ(model().trimEnd(), 0);
    EXPECT_FALSE(model().previewPlaying());
    EXPECT_EQ(model().topRegion(), (CropRegion{.x = 0.04, .y = 0.14, .width = 0.44, .height = 0.72}));
    EXPECT_EQ(model().bottomRegion(), (CropRegion{.x = 0.52, .y = 0.14, .width = 0.44, .height = 0.72}));
    EXPECT_EQ(model().settings(), (ExportSettings{.aspect = OutputAspect::portrait,
                                                  .customWidth = 1080,
                                                  .customHeight = 1920,
                                                  .includeAudio = true}));
    EXPECT_EQ(model().selectedCrop(), 0);
    EXPECT_TRUE(model().previewMuted());
    EXPECT_EQ(model().exportTask(), nullptr);
    EXPECT_EQ(model().phaseMessage(), "Choose a horizontal video to begin.");
}

TEST_F(AFreshModel, CallsNoService)
{
    runQueuedTasks();
    EXPECT_EQ(takeJournal(), Lines());
}

TEST(PublishedProperties, AreAnnouncedBeforeEveryAssignmentAndNotifiedAfterIt)
{
    for (const Property& property : publishedProperties()) {
        SCOPED_TRACE(property.name);
        FakeServices services;
        AppModel model(services.services());
        std::vector<std::string> order;
        QObject::connect(&model, &AppModel::objectWillChange, &model, [&] {
            order.push_back(property.isAssigned(model) ? "will change, assigned" : "will change, not yet");
        });
        QObject::connect(&model, property.changed, &model, [&] {
            order.push_back(property.isAssigned(model) ? "changed, assigned" : "changed, not yet");
        });

        EXPECT_FALSE(property.isAssigned(model));
        property.assign(model);
        EXPECT_EQ(order, (std::vector<std::string>{"will change, not yet", "changed, assigned"}));

        order.clear();
        property.assign(model);
        EXPECT_EQ(order, (std::vector<std::string>{"will change, assigned", "changed, assigned"}))
            << "the same value again";
    }
}

TEST(PublishedProperties, NotifyOnlyTheirOwnObservers)
{
    const auto properties = publishedProperties();
    for (const Property& assigned : properties) {
        FakeServices services;
        AppModel model(services.services());
        std::vector<std::string> notified;
        for (const Property& property : properties)
            QObject::connect(&model, property.changed, &model, [&] { notified.push_back(property.name); });
        assigned.assign(model);
        EXPECT_EQ(notified, std::vector<std::string>{assigned.name});
    }
}

TEST(PublishedProperties, AreFourteen)
{
    EXPECT_EQ(publishedProperties().size(), 14U);
}

TEST_F(PreviewMuted, ChangesOnlyTheFlagWithoutAPlayer)
{
    model().setPreviewMuted(false);
    EXPECT_FALSE(model().previewMuted());
    EXPECT_EQ(takeJournal(), Lines{"previewMuted false"});
}

TEST_F(PreviewMuted, ReachesThePlayerOnEveryAssignment)
{
    load(20);
    model().setPreviewMuted(false);
    model().setPreviewMuted(false);
    model().setPreviewMuted(true);
    EXPECT_EQ(takeJournal(), (Lines{"previewMuted false", "player 1: unmute", "previewMuted false",
                                    "player 1: unmute", "previewMuted true", "player 1: mute"}));
}

TEST_F(PreviewMuted, AppliesToAPlayerCreatedLater)
{
    model().setPreviewMuted(false);
    load(20);
    EXPECT_FALSE(player().isMuted());
    model().setPreviewMuted(true);
    load(20);
    EXPECT_TRUE(player().isMuted());
}

TEST_F(ModelTest, ShowsTheFileNameOfALoadedSource)
{
    load(20, "/Movies/clip one.mov");
    EXPECT_EQ(model().phaseMessage(), "clip one.mov");
    model().setSourceURL(std::nullopt);
    EXPECT_EQ(model().phaseMessage(), "Ready");
}

TEST_F(ModelTest, DoesNotTouchThePlayerWhenDestroyed)
{
    load(20);
    m_services.thumbnails.back().task().complete({});
    runQueuedTasks();
    takeJournal();
    destroyModel();
    EXPECT_EQ(takeJournal(), Lines()) << "no observer removed, nothing paused, nothing closed";
}

} // namespace stackreel
