#include "tests/updates/FetchOutcome.h"
#include "tests/updates/LoopbackServer.h"
#include "tests/updates/TlsFixture.h"

namespace stackreel
{

namespace
{

const QString unreachable =
    QStringLiteral("Stackreel could not reach its update information. Please try again later.");

} // namespace

TEST(FeedFetcherTls, FetchesFromATrustedServer)
{
    const TrustedCertificate trusted("loopback.pem");
    LoopbackServer server(tlsServerOf("loopback.pem"), sendDocument("feed"));
    EXPECT_EQ(fetch(server.url()).document, "feed");
    EXPECT_EQ(server.url().scheme(), QStringLiteral("https"));
}

TEST(FeedFetcherTls, SendsNothingToAnUntrustedServer)
{
    LoopbackServer server(tlsServerOf("loopback.pem"), sendDocument("forged"));
    const FetchOutcome outcome = fetch(server.url());
    EXPECT_EQ(outcome.sentence, unreachable);
    EXPECT_EQ(outcome.failure, FeedFailure::noResponse);
    EXPECT_TRUE(server.paths().isEmpty());
}

TEST(FeedFetcherTls, SendsNothingWhenTheCertificateHasAnotherNameOrHasExpired)
{
    for (const char* certificate : {"other.pem", "expired.pem"}) {
        const TrustedCertificate trusted(certificate);
        LoopbackServer server(tlsServerOf(certificate), sendDocument("forged"));
        EXPECT_EQ(fetch(server.url()).sentence, unreachable) << certificate;
        EXPECT_TRUE(server.paths().isEmpty()) << certificate;
    }
}

TEST(FeedFetcherTls, FailsWhenAnHttpsServerRespondsInPlainText)
{
    LoopbackServer server(sendDocument("forged"));
    QUrl url = server.url();
    url.setScheme(QStringLiteral("https"));
    EXPECT_EQ(fetch(url, {.time = std::chrono::seconds(2)}).sentence, unreachable);
}

TEST(FeedFetcherTls, FollowsARedirectWithinTheOriginButNotToPlainHttp)
{
    const TrustedCertificate trusted("loopback.pem");
    LoopbackServer plain(sendDocument("forged"));
    LoopbackServer server(tlsServerOf("loopback.pem"), [](QTcpSocket& connection, const QByteArray& path) {
        (path == "/feed" ? redirectTo("/elsewhere") : sendDocument("there"))(connection, path);
    });
    EXPECT_EQ(fetch(server.url()).document, "there");
    QUrl downgraded = server.url("/elsewhere");
    downgraded.setScheme(QStringLiteral("http"));
    for (const QUrl& target : {plain.url(), downgraded}) {
        server.setResponder(redirectTo(target.toEncoded()));
        EXPECT_EQ(fetch(server.url()).sentence, unreachable);
    }
    EXPECT_TRUE(plain.paths().isEmpty());
}

} // namespace stackreel
