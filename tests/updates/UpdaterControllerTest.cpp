#include "app/UpdaterController.h"

#include "packaging/feed-tool/FeedSigningKey.h"
#include "system/Version.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/updates/FetchOutcome.h"
#include "tests/updates/LoopbackServer.h"
#include "tests/updates/RecordingNotifier.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

/// Creates controllers as the application does, from an information dictionary, which a test gives as JSON
/// text.
class UpdaterControllerTest : public testing::Test
{
protected:
    InfoDictionary info(const std::string& json) const
    {
        return InfoDictionary::read(folder.write("Info.json", json));
    }
    UpdateServices services() const
    {
        return {.notifier = notifier,
                .store = UpdateStore(folder / "updates.ini"),
                .schedule = {.initialDelay = std::chrono::milliseconds(0)}};
    }

    TemporaryDirectory folder;
    std::shared_ptr<RecordingNotifier> notifier = std::make_shared<RecordingNotifier>();
    LoopbackServer server{sendNothing()};
};

} // namespace

TEST_F(UpdaterControllerTest, EnablesUpdatesUnlessTheKeyIsMissingOrThePlaceholder)
{
    struct Row {
        const char* json;
        bool enabled;
    };
    const Row rows[] = {
        {R"({})", false},
        {R"({"SUFeedURL": "https://example.org/"})", false},
        {R"({"suPublicEDKey": "key"})", false},
        {R"({"SUPublicEDKey": 7})", false},
        {R"({"SUPublicEDKey": true})", false},
        {R"({"SUPublicEDKey": null})", false},
        {R"({"SUPublicEDKey": ["key"]})", false},
        {R"({"SUPublicEDKey": {"key": "key"}})", false},
        {R"({"SUPublicEDKey": ""})", false},
        {R"({"SUPublicEDKey": "REPLACE_BEFORE_RELEASE"})", false},
        {R"({"SUPublicEDKey": " REPLACE_BEFORE_RELEASE"})", true},
        {R"({"SUPublicEDKey": "REPLACE_BEFORE_RELEASE "})", true},
        {R"({"SUPublicEDKey": "REPLACE_BEFORE_RELEASE\u0000"})", true},
        {R"({"SUPublicEDKey": "replace_before_release"})", true},
        {R"({"SUPublicEDKey": " "})", true},
        {R"({"SUPublicEDKey": "\u0000"})", true},
        {R"({"SUPublicEDKey": "anything"})", true},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(UpdaterController::enablesUpdates(info(row.json)), row.enabled) << row.json;
        const UpdaterController controller(info(row.json), services());
        EXPECT_EQ(controller.updatesEnabled(), row.enabled) << row.json;
    }
}

TEST_F(UpdaterControllerTest, DoesNothingWithoutAKey)
{
    UpdaterController controller(info(R"({"SUFeedURL": ")" + server.url().toString().toStdString() + R"("})"),
                                 services());
    controller.checkForUpdates();
    controller.controller().checkForUpdates(nullptr);
    // If the updater had sent a request, it would have arrived before this one.
    server.setResponder(sendDocument("later"));
    EXPECT_EQ(fetch(server.url("/later")).document, "later");
    EXPECT_EQ(server.paths(), QByteArrayList({"/later"}));
    EXPECT_TRUE(notifier->shown.empty());
}

TEST_F(UpdaterControllerTest, ReadsTheFeedAtLaunchAndWhenTheUserRequestsIt)
{
    const FeedSigningKey key = FeedSigningKey::generate();
    server.setResponder(sendDocument(QByteArray::fromStdString(key.signedDocument(
        R"({"serial": 1, "releases": [{"version": "0.0.1", "notes": "", "download": "https://example.org/"}]})"))));
    UpdaterController controller(info(R"({"SUFeedURL": ")" + server.url().toString().toStdString() +
                                      R"(", "SUPublicEDKey": ")" + key.publicKey() + R"("})"),
                                 services());
    ASSERT_TRUE(eventually([&] { return server.paths().size() == 1; }));
    controller.checkForUpdates();
    ASSERT_TRUE(eventually([&] { return !notifier->shown.empty(); }));
    EXPECT_EQ(notifier->shown, std::vector<std::string>({std::string("up to date with ") + buildVersion()}));
}

} // namespace stackreel
