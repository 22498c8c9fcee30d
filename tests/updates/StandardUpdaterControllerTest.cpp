#include "updates/StandardUpdaterController.h"

#include "packaging/feed-tool/FeedSigningKey.h"
#include "tests/support/Awaited.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/updates/FetchOutcome.h"
#include "tests/updates/LoopbackServer.h"
#include "tests/updates/RecordingNotifier.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;
using Messages = std::vector<std::string>;

const Messages unconfigured = {"This copy of Stackreel cannot check for updates."};
const Messages unreachable = {"Stackreel could not reach its update information. Please try again later."};
const Messages unverified = {"The update information could not be verified, so it was ignored."};
const Messages unreadable = {"The update information could not be read, so it was ignored."};
const Messages outdated = {"The update information is older than what came before, so it was ignored."};
const Messages upToDate = {"up to date with 0.1.0"};
const Messages newer = {"update 0.2.0 for 0.1.0: New. at https://example.org/0.2.0"};
const Messages newerInBackground = {"background update 0.2.0 for 0.1.0: New. at https://example.org/0.2.0"};

/// An updater of version 0.1.0 with a server, a clock and a store of its own. By default, the first
/// background check is due after an hour, so it does not run during a test.
class StandardUpdaterControllerTest : public testing::Test
{
protected:
    static std::string feed(const std::string& version, int serial = 1)
    {
        return R"({"serial": )" + std::to_string(serial) + R"(, "releases": [{"version": ")" + version +
               R"(", "notes": "New.", "download": "https://example.org/)" + version + R"("}]})";
    }

    void serve(const std::string& feed) { server.setResponder(sendDocument(signedFeed(feed))); }
    QByteArray signedFeed(const std::string& feed) const
    {
        return QByteArray::fromStdString(key.signedDocument(feed));
    }

    StandardUpdaterController& start(bool startingUpdater = true)
    {
        const UpdateServices services = {.notifier = notifier,
                                         .store = UpdateStore(storeFile),
                                         .now =
                                             [this] {
                                                 ++clockReads;
                                                 return now;
                                             },
                                         .schedule = schedule,
                                         .limits = limits};
        updater.emplace(startingUpdater, configuration, services);
        finished.emplace(&*updater, &StandardUpdaterController::checkFinished);
        return *updater;
    }

    /// Requests a check as the user does, and returns the messages that are shown.
    Messages checkAsUser()
    {
        if (!updater)
            start();
        const qsizetype before = finished->size();
        updater->checkForUpdates(nullptr);
        EXPECT_TRUE(waitForChecks(before + 1));
        return std::exchange(notifier->shown, {});
    }

    bool waitForChecks(qsizetype count)
    {
        return eventually([&] { return finished->size() >= count; });
    }

    /// Makes the server leave requests unanswered. The test responds through `pendingConnection`.
    void holdRequests()
    {
        server.setResponder(
            [this](QTcpSocket& connection, const QByteArray&) { pendingConnection = &connection; });
    }

    TemporaryDirectory folder;
    std::filesystem::path storeFile = folder / "updates.ini";
    QPointer<QTcpSocket> pendingConnection;
    FeedSigningKey key = FeedSigningKey::generate();
    LoopbackServer server{sendNothing()};
    std::shared_ptr<RecordingNotifier> notifier = std::make_shared<RecordingNotifier>();
    qsizetype clockReads = 0;
    UpdateStore::Time now{1'789'000'000s};
    UpdateConfiguration configuration = {.feedURL = server.url().toString().toStdString(),
                                         .publicKey = key.publicKey(),
                                         .installedVersion = "0.1.0"};
    UpdateSchedule schedule = {.initialDelay = 1h, .pollInterval = 1h};
    FeedLimits limits = {};
    std::optional<StandardUpdaterController> updater;
    std::optional<QSignalSpy> finished;
};

/// Like `StandardUpdaterControllerTest`, but polls for a due check every few milliseconds.
class BackgroundUpdateTest : public StandardUpdaterControllerTest
{
protected:
    BackgroundUpdateTest() { schedule = {.initialDelay = 0ms, .pollInterval = 2ms}; }

    /// Waits until the updater has polled many times. Returns the number of checks since its start.
    qsizetype checksAfterManyPolls()
    {
        const qsizetype before = clockReads;
        EXPECT_TRUE(eventually([&] { return clockReads > before + 20; }));
        return finished->size();
    }
};

} // namespace

TEST_F(StandardUpdaterControllerTest, OffersANewerVersion)
{
    serve(feed("0.2.0"));
    EXPECT_EQ(checkAsUser(), newer);
    EXPECT_EQ(server.paths().size(), 1);
}

TEST_F(StandardUpdaterControllerTest, OffersNoEqualOrLowerVersion)
{
    for (const char* version : {"0.1.0", "0.1", "0.0.9", "0"}) {
        serve(feed(version));
        EXPECT_EQ(checkAsUser(), upToDate) << version;
    }
}

TEST_F(StandardUpdaterControllerTest, RejectsAFeedOlderThanTheLastOneAlsoAfterARestart)
{
    serve(feed("0.1.0", 8));
    EXPECT_EQ(checkAsUser(), upToDate);
    serve(feed("0.2.0", 7));
    EXPECT_EQ(checkAsUser(), outdated);
    start();
    EXPECT_EQ(checkAsUser(), outdated);
    serve(feed("0.2.0", 8));
    EXPECT_EQ(checkAsUser(), newer);
}

TEST_F(StandardUpdaterControllerTest, KeepsItsSerialWhenAFeedIsRejected)
{
    server.setResponder(sendDocument(
        QByteArray::fromStdString(FeedSigningKey::generate().signedDocument(feed("9.0", 1000)))));
    EXPECT_EQ(checkAsUser(), unverified);
    serve(feed("0.2.0", 1));
    EXPECT_EQ(checkAsUser(), newer);
}

TEST_F(StandardUpdaterControllerTest, ShowsOneMessageForAForgedOrBrokenDocument)
{
    QByteArray flipped = signedFeed(feed("0.2.0"));
    flipped[flipped.size() - 20] = static_cast<char>(flipped[flipped.size() - 20] ^ 1);
    const QByteArray whole = signedFeed(feed("0.2.0"));
    for (const QByteArray& document : {flipped, whole.chopped(1), whole + ' ', whole.mid(1), QByteArray(),
                                       QByteArray::fromStdString(feed("0.2.0")), QByteArray(1000, '\0')}) {
        server.setResponder(sendDocument(document));
        EXPECT_EQ(checkAsUser(), unverified) << document.toStdString();
    }
    for (const std::string& broken : {std::string("nonsense"), std::string(200'000, '['), feed("0.2-beta"),
                                      feed("0.2.0", -1), std::string(10, '\0')}) {
        serve(broken);
        EXPECT_EQ(checkAsUser(), unreadable) << broken.substr(0, 100);
    }
}

TEST_F(StandardUpdaterControllerTest, ShowsOneMessageWhenTheServerMisbehaves)
{
    limits.time = 300ms;
    const LoopbackServer::Responder responses[] = {
        redirectTo("http://127.0.0.2/"),
        redirectTo("/feed"),
        sendNothing(),
        sendSlowly("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n"),
        sendAndClose("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"),
        sendAndClose("HTTP/1.1 404 Not Found\r\n\r\n")};
    for (const LoopbackServer::Responder& response : responses) {
        server.setResponder(response);
        EXPECT_EQ(checkAsUser(), unreachable);
    }
    server.setResponder(sendForever("HTTP/1.1 200 OK\r\n\r\n", QByteArray(65536, 'x')));
    EXPECT_EQ(checkAsUser(), Messages({"The update information is too large, so it was ignored."}));
}

TEST_F(StandardUpdaterControllerTest, RejectsHalfAFeedWhateverItsContentLength)
{
    const QByteArray whole = signedFeed(feed("0.2.0"));
    const QByteArray half = whole.left(whole.size() / 2);
    const QByteArray responses[] = {
        "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + half,
        "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(half.size()) + "\r\n\r\n" + whole,
        "HTTP/1.1 200 OK\r\nContent-Length: -1\r\nConnection: close\r\n\r\n" + half,
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffff\r\n" + half};
    for (const QByteArray& response : responses) {
        server.setResponder(sendAndClose(response));
        const Messages shown = checkAsUser();
        EXPECT_TRUE(shown == unverified || shown == unreachable) << response.toStdString();
    }
}

TEST_F(StandardUpdaterControllerTest, SendsNoRequestWhenMisconfigured)
{
    serve(feed("0.2.0"));
    const UpdateConfiguration good = configuration;
    for (const char* url :
         {"", "nonsense", "http://example.org/feed", "ftp://127.0.0.1/", "file:///etc/passwd"}) {
        configuration = good;
        configuration.feedURL = url;
        start();
        EXPECT_EQ(checkAsUser(), unconfigured) << url;
    }
    for (const char* text : {" ", "replace_before_release", "AAAA"}) {
        configuration = good;
        configuration.publicKey = text;
        start();
        EXPECT_EQ(checkAsUser(), unconfigured) << text;
    }
    configuration = good;
    configuration.installedVersion = "unknown";
    start();
    EXPECT_EQ(checkAsUser(), unconfigured);
    EXPECT_TRUE(server.paths().isEmpty());
}

TEST_F(StandardUpdaterControllerTest, ShowsOneMessageForSeveralRequestsDuringOneCheck)
{
    holdRequests();
    start().checkForUpdates(nullptr);
    updater->checkForUpdates(&*updater);
    ASSERT_TRUE(eventually([&] { return pendingConnection != nullptr; }));
    updater->checkForUpdates(nullptr);
    sendDocument(signedFeed(feed("0.2.0")))(*pendingConnection, {});
    ASSERT_TRUE(waitForChecks(1));
    EXPECT_EQ(notifier->shown, newer);
    EXPECT_EQ(server.paths().size(), 1);
}

TEST_F(StandardUpdaterControllerTest, DoesNothingUnlessStarted)
{
    schedule.initialDelay = 0ms;
    serve(feed("0.2.0"));
    start(false).checkForUpdates(nullptr);
    // If the updater had sent a request, it would have arrived before this one.
    EXPECT_EQ(fetch(server.url("/later")).failure, std::nullopt);
    EXPECT_EQ(server.paths(), QByteArrayList({"/later"}));
    EXPECT_TRUE(notifier->shown.empty());
    EXPECT_TRUE(finished->isEmpty());
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(StandardUpdaterControllerTest, CanBeDestroyedDuringACheck)
{
    start().checkForUpdates(nullptr);
    ASSERT_TRUE(eventually([&] { return !server.paths().isEmpty(); }));
    updater.reset();
    runPendingEvents();
    EXPECT_TRUE(notifier->shown.empty());
}

TEST_F(BackgroundUpdateTest, ChecksOnceADay)
{
    serve(feed("0.1.0"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    EXPECT_EQ(checksAfterManyPolls(), 1);
    now += 24h - 1s;
    EXPECT_EQ(checksAfterManyPolls(), 1);
    now += 1s;
    ASSERT_TRUE(waitForChecks(2));
    EXPECT_EQ(checksAfterManyPolls(), 2);
    EXPECT_TRUE(notifier->shown.empty());
}

TEST_F(BackgroundUpdateTest, KeepsTheTimeOfTheLastCheckAcrossARestart)
{
    serve(feed("0.1.0"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    start();
    EXPECT_EQ(checksAfterManyPolls(), 0);
    now += 25h;
    ASSERT_TRUE(waitForChecks(1));
}

TEST_F(BackgroundUpdateTest, IsPostponedByACheckOfTheUser)
{
    serve(feed("0.1.0"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now += 23h;
    EXPECT_EQ(checkAsUser(), upToDate);
    now += 23h;
    EXPECT_EQ(checksAfterManyPolls(), 2);
}

TEST_F(BackgroundUpdateTest, ChecksAgainWhenTheLastCheckIsInTheFuture)
{
    serve(feed("0.1.0"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now -= 240h;
    ASSERT_TRUE(waitForChecks(2));
    EXPECT_EQ(checksAfterManyPolls(), 2);
}

TEST_F(BackgroundUpdateTest, ShowsAMessageOnlyForANewerVersion)
{
    const LoopbackServer::Responder quiet[] = {sendDocument(signedFeed(feed("0.1.0", 5))),
                                               sendDocument(signedFeed(feed("0.2.0", 4))),
                                               sendDocument(signedFeed("nonsense")),
                                               sendDocument("forged"),
                                               redirectTo("http://127.0.0.2/"),
                                               sendAndClose(""),
                                               sendAndClose("HTTP/1.1 500 No\r\n\r\n")};
    server.setResponder(quiet[0]);
    start();
    int count = 1;
    for (const LoopbackServer::Responder& response : quiet) {
        ASSERT_TRUE(waitForChecks(count++));
        EXPECT_TRUE(notifier->shown.empty());
        server.setResponder(response);
        now += 24h;
    }
    ASSERT_TRUE(waitForChecks(count++));
    serve(feed("0.2.0", 6));
    now += 24h;
    ASSERT_TRUE(waitForChecks(count));
    EXPECT_EQ(notifier->shown, newerInBackground);
}

TEST_F(BackgroundUpdateTest, RetriesInAnHourSilentlyWhenNoServerResponds)
{
    server.setResponder(sendAndClose(""));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now += 1h - 1s;
    EXPECT_EQ(checksAfterManyPolls(), 1);
    now += 1s;
    ASSERT_TRUE(waitForChecks(2));
    EXPECT_EQ(checksAfterManyPolls(), 2);
    serve(feed("0.1.0"));
    now += 1h;
    ASSERT_TRUE(waitForChecks(3));
    now += 23h;
    EXPECT_EQ(checksAfterManyPolls(), 3);
    EXPECT_TRUE(notifier->shown.empty());
}

TEST_F(BackgroundUpdateTest, WaitsADayAfterABadResponse)
{
    server.setResponder(sendAndClose("HTTP/1.1 500 No\r\n\r\n"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now += 23h;
    EXPECT_EQ(checksAfterManyPolls(), 1);
    now += 1h;
    ASSERT_TRUE(waitForChecks(2));
}

TEST_F(BackgroundUpdateTest, ContinuesWhenItsStateCannotBeWritten)
{
    storeFile = "/proc/none/updates.ini";
    serve(feed("0.1.0", 8));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now += 23h;
    EXPECT_EQ(checksAfterManyPolls(), 1);
    serve(feed("0.2.0", 7));
    EXPECT_EQ(checkAsUser(), outdated);
}

TEST_F(BackgroundUpdateTest, ShowsItsResultToAUserWhoRequestsACheckMeanwhile)
{
    holdRequests();
    start();
    ASSERT_TRUE(eventually([&] { return pendingConnection != nullptr; }));
    updater->checkForUpdates(nullptr);
    sendDocument(signedFeed(feed("0.1.0")))(*pendingConnection, {});
    ASSERT_TRUE(waitForChecks(1));
    EXPECT_EQ(notifier->shown, upToDate);
    EXPECT_EQ(server.paths().size(), 1);
}

} // namespace stackreel
