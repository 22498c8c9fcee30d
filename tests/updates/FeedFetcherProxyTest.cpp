#include "tests/updates/FetchOutcome.h"
#include "tests/updates/LoopbackServer.h"

#include <QSemaphore>
#include <QThread>

namespace stackreel
{

namespace
{

using namespace std::chrono_literals;

const QUrl remoteFeed(QStringLiteral("https://feed.example/feed"));

QNetworkProxy proxyAt(const QUrl& server)
{
    return QNetworkProxy(QNetworkProxy::HttpProxy, server.host(), static_cast<quint16>(server.port()));
}

/// A proxy resolver that blocks until the semaphore `mayReturn` is released. Each thread that runs it has a
/// copy.
struct BlockingResolver {
    QSemaphore mayReturn;
    std::atomic<int> runs = 0;

    ProxyLookup::Resolver resolver(QNetworkProxy proxy = QNetworkProxy::NoProxy)
    {
        return [this, proxy, held = m_copies](const QUrl&) {
            ++runs;
            mayReturn.acquire();
            return proxy;
        };
    }
    /// The number of copies of the resolver that exist.
    long copies() const { return m_copies.use_count() - 1; }

private:
    std::shared_ptr<int> m_copies = std::make_shared<int>();
};

} // namespace

TEST(FeedFetcherProxy, IsResolvedOffTheMainThread)
{
    LoopbackServer proxy(sendAndClose("HTTP/1.1 503 No\r\n\r\n"));
    const QThread* const mainThread = QThread::currentThread();
    QUrl resolvedUrl;
    FeedFetcher fetcher({}, [&](const QUrl& url) {
        EXPECT_NE(QThread::currentThread(), mainThread);
        resolvedUrl = url;
        return proxyAt(proxy.url());
    });
    EXPECT_EQ(fetch(fetcher, remoteFeed).failure, FeedFailure::noResponse);
    EXPECT_EQ(resolvedUrl, remoteFeed);
    EXPECT_TRUE(proxy.lastRequest().startsWith("CONNECT feed.example:443 "))
        << proxy.lastRequest().toStdString();
}

TEST(FeedFetcherProxy, TimesOutAndResolvesOnceWhenResolvingBlocks)
{
    LoopbackServer proxy(sendAndClose("HTTP/1.1 503 No\r\n\r\n"));
    BlockingResolver blocking;
    FeedFetcher fetcher({.time = 100ms}, blocking.resolver(proxyAt(proxy.url())));
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(fetch(fetcher, remoteFeed).failure, FeedFailure::noResponse);
    EXPECT_LE(blocking.runs, 1);
    blocking.mayReturn.release();
    EXPECT_TRUE(eventually([&] { return blocking.copies() == 1; })) << "the thread has not ended";
    runPendingEvents();
    // No request is sent when the proxy becomes known after the timeout.
    EXPECT_TRUE(proxy.paths().isEmpty());
    EXPECT_FALSE(fetcher.isFetching());
}

TEST(FeedFetcherProxy, CanBeDestroyedWhileResolving)
{
    BlockingResolver blocking;
    {
        FeedFetcher fetcher({}, blocking.resolver());
        fetcher.fetch(remoteFeed);
        EXPECT_TRUE(eventually([&] { return blocking.runs == 1; }));
    }
    blocking.mayReturn.release();
    EXPECT_TRUE(eventually([&] { return blocking.copies() == 0; })) << "the thread has not ended";
    runPendingEvents();
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
