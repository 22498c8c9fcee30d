#include "platform/updates/StandardUpdaterController.h"

#include "packaging/feed-tool/FeedSigningKey.h"
#include "tests/support/Awaited.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/updates/LoopbackServer.h"
#include "tests/updates/RecordedMessages.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;
using Said = std::vector<std::string>;

const Said unconfigured = {"This copy of Stackreel cannot check for updates."};
const Said unreachable = {"Stackreel could not reach its update information. Please try again later."};
const Said unverified = {"The update information could not be verified, so it was ignored."};
const Said unreadable = {"The update information could not be read, so it was ignored."};
const Said outdated = {"The update information is older than what came before, so it was ignored."};
const Said upToDate = {"up to date with 0.1.0"};
const Said newer = {"update 0.2.0 for 0.1.0: New. at https://example.org/0.2.0"};
const Said newerUnasked = {"unasked update 0.2.0 for 0.1.0: New. at https://example.org/0.2.0"};

/// An updater of version 0.1.0 with a server, a clock and a memory of its own. Its background checks do not
/// start by themselves before a test has the clock look.
class StandardUpdaterControllerTest : public testing::Test
{
protected:
    static std::string feed(const std::string& version, int serial = 1)
    {
        return R"({"serial": )" + std::to_string(serial) + R"(, "releases": [{"version": ")" + version +
               R"(", "notes": "New.", "download": "https://example.org/)" + version + R"("}]})";
    }

    void serve(const std::string& feed) { server.setAnswer(sendDocument(signedFeed(feed))); }
    QByteArray signedFeed(const std::string& feed) const
    {
        return QByteArray::fromStdString(key.signedDocument(feed));
    }

    StandardUpdaterController& start(bool startingUpdater = true)
    {
        const UpdateServices services = {.messages = messages,
                                         .store = UpdateStore(storeFile),
                                         .now =
                                             [this] {
                                                 ++looks;
                                                 return now;
                                             },
                                         .schedule = schedule,
                                         .limits = limits};
        updater.emplace(startingUpdater, configuration, services);
        finished.emplace(&*updater, &StandardUpdaterController::checkFinished);
        return *updater;
    }

    /// What the user is told after asking.
    Said ask()
    {
        if (!updater)
            start();
        const qsizetype before = finished->size();
        updater->checkForUpdates(nullptr);
        EXPECT_TRUE(waitForChecks(before + 1));
        return std::exchange(messages->said, {});
    }

    bool waitForChecks(qsizetype count)
    {
        return eventually([&] { return finished->size() >= count; });
    }

    /// Has the server wait for the test to answer through `held`.
    void holdRequests()
    {
        server.setAnswer([this](QTcpSocket& connection, const QByteArray&) { held = &connection; });
    }

    TemporaryDirectory folder;
    std::filesystem::path storeFile = folder / "updates.ini";
    QPointer<QTcpSocket> held;
    FeedSigningKey key = FeedSigningKey::generate();
    LoopbackServer server{sayNothing()};
    std::shared_ptr<RecordedMessages> messages = std::make_shared<RecordedMessages>();
    qsizetype looks = 0; ///< at the clock
    UpdateStore::Time now{1'789'000'000s};
    UpdateConfiguration configuration = {.feedURL = server.url().toString().toStdString(),
                                         .publicKey = key.publicKey(),
                                         .installedVersion = "0.1.0"};
    UpdateSchedule schedule = {.firstLook = 1h, .nextLooks = 1h};
    FeedLimits limits = {};
    std::optional<StandardUpdaterController> updater;
    std::optional<QSignalSpy> finished;
};

/// The same, looking at the clock every few milliseconds.
class BackgroundUpdateTest : public StandardUpdaterControllerTest
{
protected:
    BackgroundUpdateTest() { schedule = {.firstLook = 0ms, .nextLooks = 2ms}; }

    /// Waits until the updater has looked at the clock many times; gives the checks it has made in all.
    qsizetype checksAfterManyLooks()
    {
        const qsizetype before = looks;
        EXPECT_TRUE(eventually([&] { return looks > before + 20; }));
        return finished->size();
    }
};

} // namespace

TEST_F(StandardUpdaterControllerTest, OffersANewerVersion)
{
    serve(feed("0.2.0"));
    EXPECT_EQ(ask(), newer);
    EXPECT_EQ(server.paths().size(), 1);
}

TEST_F(StandardUpdaterControllerTest, OffersNoEqualOrLowerVersion)
{
    for (const char* version : {"0.1.0", "0.1", "0.0.9", "0"}) {
        serve(feed(version));
        EXPECT_EQ(ask(), upToDate) << version;
    }
}

TEST_F(StandardUpdaterControllerTest, RefusesAnOlderFeedThanTheLastOneSeenAlsoAfterARestart)
{
    serve(feed("0.1.0", 8));
    EXPECT_EQ(ask(), upToDate);
    serve(feed("0.2.0", 7));
    EXPECT_EQ(ask(), outdated);
    start();
    EXPECT_EQ(ask(), outdated);
    serve(feed("0.2.0", 8));
    EXPECT_EQ(ask(), newer);
}

TEST_F(StandardUpdaterControllerTest, LearnsNothingFromAFeedItRefuses)
{
    server.setAnswer(sendDocument(
        QByteArray::fromStdString(FeedSigningKey::generate().signedDocument(feed("9.0", 1000)))));
    EXPECT_EQ(ask(), unverified);
    serve(feed("0.2.0", 1));
    EXPECT_EQ(ask(), newer);
}

TEST_F(StandardUpdaterControllerTest, RefusesForgedAndBrokenDocumentsCalmly)
{
    QByteArray flipped = signedFeed(feed("0.2.0"));
    flipped[flipped.size() - 20] = static_cast<char>(flipped[flipped.size() - 20] ^ 1);
    const QByteArray whole = signedFeed(feed("0.2.0"));
    for (const QByteArray& document : {flipped, whole.chopped(1), whole + ' ', whole.mid(1), QByteArray(),
                                       QByteArray::fromStdString(feed("0.2.0")), QByteArray(1000, '\0')}) {
        server.setAnswer(sendDocument(document));
        EXPECT_EQ(ask(), unverified) << document.toStdString();
    }
    for (const std::string& broken : {std::string("nonsense"), std::string(200'000, '['), feed("0.2-beta"),
                                      feed("0.2.0", -1), std::string(10, '\0')}) {
        serve(broken);
        EXPECT_EQ(ask(), unreadable) << broken.substr(0, 100);
    }
}

TEST_F(StandardUpdaterControllerTest, TellsOfAServerThatMisbehavesInOneCalmSentence)
{
    limits.time = 300ms;
    const LoopbackServer::Answer answers[] = {
        redirectTo("http://127.0.0.2/"),
        redirectTo("/feed"),
        sayNothing(),
        drip("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n"),
        sendAndClose("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"),
        sendAndClose("HTTP/1.1 404 Not Found\r\n\r\n")};
    for (const LoopbackServer::Answer& answer : answers) {
        server.setAnswer(answer);
        EXPECT_EQ(ask(), unreachable);
    }
    server.setAnswer(sendForever("HTTP/1.1 200 OK\r\n\r\n", QByteArray(65536, 'x')));
    EXPECT_EQ(ask(), Said({"The update information is too large, so it was ignored."}));
}

TEST_F(StandardUpdaterControllerTest, RefusesHalfAFeedHoweverItsLengthIsTold)
{
    const QByteArray whole = signedFeed(feed("0.2.0"));
    const QByteArray half = whole.left(whole.size() / 2);
    const QByteArray answers[] = {"HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + half,
                                  "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(half.size()) +
                                      "\r\n\r\n" + whole,
                                  "HTTP/1.1 200 OK\r\nContent-Length: -1\r\nConnection: close\r\n\r\n" + half,
                                  "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nffff\r\n" + half};
    for (const QByteArray& answer : answers) {
        server.setAnswer(sendAndClose(answer));
        const Said said = ask();
        EXPECT_TRUE(said == unverified || said == unreachable) << answer.toStdString();
    }
}

TEST_F(StandardUpdaterControllerTest, AsksNobodyWhenItIsConfiguredBadly)
{
    serve(feed("0.2.0"));
    const UpdateConfiguration good = configuration;
    for (const char* url :
         {"", "nonsense", "http://example.org/feed", "ftp://127.0.0.1/", "file:///etc/passwd"}) {
        configuration = good;
        configuration.feedURL = url;
        start();
        EXPECT_EQ(ask(), unconfigured) << url;
    }
    for (const char* text : {" ", "replace_before_release", "AAAA"}) {
        configuration = good;
        configuration.publicKey = text;
        start();
        EXPECT_EQ(ask(), unconfigured) << text;
    }
    configuration = good;
    configuration.installedVersion = "unknown";
    start();
    EXPECT_EQ(ask(), unconfigured);
    EXPECT_TRUE(server.paths().isEmpty());
}

TEST_F(StandardUpdaterControllerTest, AnswersSeveralRequestsDuringOneCheckOnce)
{
    holdRequests();
    start().checkForUpdates(nullptr);
    updater->checkForUpdates(&*updater);
    ASSERT_TRUE(eventually([&] { return held != nullptr; }));
    updater->checkForUpdates(nullptr);
    sendDocument(signedFeed(feed("0.2.0")))(*held, {});
    ASSERT_TRUE(waitForChecks(1));
    EXPECT_EQ(messages->said, newer);
    EXPECT_EQ(server.paths().size(), 1);
}

TEST_F(StandardUpdaterControllerTest, DoesNothingUnlessStarted)
{
    schedule.firstLook = 0ms;
    serve(feed("0.2.0"));
    start(false).checkForUpdates(nullptr);
    eventually([] { return false; }, 50ms);
    EXPECT_TRUE(server.paths().isEmpty());
    EXPECT_TRUE(messages->said.empty());
    EXPECT_TRUE(finished->isEmpty());
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(StandardUpdaterControllerTest, MayGoDuringACheck)
{
    start().checkForUpdates(nullptr);
    ASSERT_TRUE(eventually([&] { return !server.paths().isEmpty(); }));
    updater.reset();
    eventually([] { return false; }, 20ms);
    EXPECT_TRUE(messages->said.empty());
}

TEST_F(BackgroundUpdateTest, ChecksOnceADay)
{
    serve(feed("0.1.0"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    EXPECT_EQ(checksAfterManyLooks(), 1);
    now += 24h - 1s;
    EXPECT_EQ(checksAfterManyLooks(), 1);
    now += 1s;
    ASSERT_TRUE(waitForChecks(2));
    EXPECT_EQ(checksAfterManyLooks(), 2);
    EXPECT_TRUE(messages->said.empty());
}

TEST_F(BackgroundUpdateTest, RemembersTheDayAcrossARestart)
{
    serve(feed("0.1.0"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    start();
    EXPECT_EQ(checksAfterManyLooks(), 0);
    now += 25h;
    ASSERT_TRUE(waitForChecks(1));
}

TEST_F(BackgroundUpdateTest, CountsTheUsersOwnChecks)
{
    serve(feed("0.1.0"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now += 23h;
    EXPECT_EQ(ask(), upToDate);
    now += 23h;
    EXPECT_EQ(checksAfterManyLooks(), 2);
}

TEST_F(BackgroundUpdateTest, ChecksAgainWhenTheLastCheckLiesInTheFuture)
{
    serve(feed("0.1.0"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now -= 240h;
    ASSERT_TRUE(waitForChecks(2));
    EXPECT_EQ(checksAfterManyLooks(), 2);
}

TEST_F(BackgroundUpdateTest, SpeaksOnlyOfANewerVersion)
{
    const LoopbackServer::Answer quiet[] = {sendDocument(signedFeed(feed("0.1.0", 5))),
                                            sendDocument(signedFeed(feed("0.2.0", 4))),
                                            sendDocument(signedFeed("nonsense")),
                                            sendDocument("forged"),
                                            redirectTo("http://127.0.0.2/"),
                                            sendAndClose(""),
                                            sendAndClose("HTTP/1.1 500 No\r\n\r\n")};
    server.setAnswer(quiet[0]);
    start();
    int count = 1;
    for (const LoopbackServer::Answer& answer : quiet) {
        ASSERT_TRUE(waitForChecks(count++));
        EXPECT_TRUE(messages->said.empty());
        server.setAnswer(answer);
        now += 24h;
    }
    ASSERT_TRUE(waitForChecks(count++));
    serve(feed("0.2.0", 6));
    now += 24h;
    ASSERT_TRUE(waitForChecks(count));
    EXPECT_EQ(messages->said, newerUnasked);
}

TEST_F(BackgroundUpdateTest, TriesAgainInAnHourQuietlyWhenNoServerAnswers)
{
    server.setAnswer(sendAndClose(""));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now += 1h - 1s;
    EXPECT_EQ(checksAfterManyLooks(), 1);
    now += 1s;
    ASSERT_TRUE(waitForChecks(2));
    EXPECT_EQ(checksAfterManyLooks(), 2);
    serve(feed("0.1.0"));
    now += 1h;
    ASSERT_TRUE(waitForChecks(3));
    now += 23h;
    EXPECT_EQ(checksAfterManyLooks(), 3);
    EXPECT_TRUE(messages->said.empty());
}

TEST_F(BackgroundUpdateTest, LeavesAServerAloneForTheDayThatAnswersBadly)
{
    server.setAnswer(sendAndClose("HTTP/1.1 500 No\r\n\r\n"));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now += 23h;
    EXPECT_EQ(checksAfterManyLooks(), 1);
    now += 1h;
    ASSERT_TRUE(waitForChecks(2));
}

TEST_F(BackgroundUpdateTest, GoesOnWhereItsMemoryCannotBeWritten)
{
    storeFile = "/proc/none/updates.ini";
    serve(feed("0.1.0", 8));
    start();
    ASSERT_TRUE(waitForChecks(1));
    now += 23h;
    EXPECT_EQ(checksAfterManyLooks(), 1);
    serve(feed("0.2.0", 7));
    EXPECT_EQ(ask(), outdated);
}

TEST_F(BackgroundUpdateTest, AnswersAUserWhoAsksDuringIt)
{
    holdRequests();
    start();
    ASSERT_TRUE(eventually([&] { return held != nullptr; }));
    updater->checkForUpdates(nullptr);
    sendDocument(signedFeed(feed("0.1.0")))(*held, {});
    ASSERT_TRUE(waitForChecks(1));
    EXPECT_EQ(messages->said, upToDate);
    EXPECT_EQ(server.paths().size(), 1);
}

} // namespace stackreel
