#include "tests/updates/FetchOutcome.h"
#include "tests/updates/LoopbackServer.h"

#include <QSemaphore>
#include <QThread>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

const QUrl elsewhere(QStringLiteral("https://feed.example/feed"));

QNetworkProxy proxyAt(const QUrl& server)
{
    return QNetworkProxy(QNetworkProxy::HttpProxy, server.host(), static_cast<quint16>(server.port()));
}

/// A proxy script that takes until it is released.
struct SlowScript {
    QSemaphore released;
    std::atomic<int> runs = 0;
    std::atomic<int> ends = 0;

    ProxyLookup::Choice choice(QNetworkProxy proxy = QNetworkProxy::NoProxy)
    {
        return [this, proxy](const QUrl&) {
            ++runs;
            released.acquire();
            ++ends;
            return proxy;
        };
    }
};

} // namespace

TEST(FeedFetcherProxy, AsksForItElsewhereThanOnTheMainThread)
{
    LoopbackServer proxy(sendAndClose("HTTP/1.1 503 No\r\n\r\n"));
    const QThread* const mainThread = QThread::currentThread();
    QUrl asked;
    FeedFetcher fetcher({}, [&](const QUrl& url) {
        EXPECT_NE(QThread::currentThread(), mainThread);
        asked = url;
        return proxyAt(proxy.url());
    });
    EXPECT_EQ(fetch(fetcher, elsewhere).trouble, FeedTrouble::noAnswer);
    EXPECT_EQ(asked, elsewhere);
    EXPECT_TRUE(proxy.lastRequest().startsWith("CONNECT feed.example:443 "))
        << proxy.lastRequest().toStdString();
}

TEST(FeedFetcherProxy, EndsInTimeAndAsksOnceHoweverLongTheAnswerTakes)
{
    LoopbackServer proxy(sendAndClose("HTTP/1.1 503 No\r\n\r\n"));
    SlowScript script;
    FeedFetcher fetcher({.time = 100ms}, script.choice(proxyAt(proxy.url())));
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(fetch(fetcher, elsewhere).trouble, FeedTrouble::noAnswer);
    EXPECT_LE(script.runs, 1);
    script.released.release();
    EXPECT_TRUE(eventually([&] { return script.ends == 1; }));
    eventually([] { return false; }, 20ms);
    // What comes too late starts nothing.
    EXPECT_TRUE(proxy.paths().isEmpty());
    EXPECT_FALSE(fetcher.isFetching());
}

TEST(FeedFetcherProxy, MayGoWhileItWaitsForTheAnswer)
{
    SlowScript script;
    {
        FeedFetcher fetcher({}, script.choice());
        fetcher.fetch(elsewhere);
        EXPECT_TRUE(eventually([&] { return script.runs == 1; }));
    }
    script.released.release();
    EXPECT_TRUE(eventually([&] { return script.ends == 1; }));
    eventually([] { return false; }, 20ms);
}

TEST(FeedFetcherProxy, IsNotUsedForALoopbackAddress)
{
    LoopbackServer server(sendDocument("feed"));
    LoopbackServer proxy(sendDocument("forged"));
    QNetworkProxy::setApplicationProxy(proxyAt(proxy.url()));
    FeedFetcher fetcher({}, [&](const QUrl&) { return proxyAt(proxy.url()); });
    EXPECT_EQ(fetch(fetcher, server.url()).document, "feed");
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_TRUE(proxy.paths().isEmpty());
}

} // namespace stackreel
