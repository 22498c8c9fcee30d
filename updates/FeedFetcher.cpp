#include "updates/FeedFetcher.h"

#include "system/Version.h"

#include <QHostAddress>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace stackreel
{

namespace
{

QNetworkRequest feedRequest(const QUrl& url)
{
    QNetworkRequest request(url);
    // `redirect` follows redirects. Qt itself would follow one to an address with a user name, even after the
    // reply is aborted.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, QByteArray("Stackreel/") + buildVersion());
    // With this header Qt does not decompress the document, so the size limit applies to what the server
    // sends.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

bool isLoopback(const QUrl& url)
{
    return QHostAddress(url.host()).isLoopback();
}

bool isSameOrigin(const QUrl& a, const QUrl& b)
{
    constexpr int https = 443;
    constexpr int http = 80;
    const int defaultPort = a.scheme() == QLatin1String("https") ? https : http;
    return a.scheme() == b.scheme() && a.host() == b.host() && a.port(defaultPort) == b.port(defaultPort);
}

FeedFailure failureFor(QNetworkReply::NetworkError error)
{
    // Lower error codes concern the connection, a proxy or a redirect, such as one to the log-in page of a
    // hotel's network.
    const bool isResponse = error == QNetworkReply::NoError || error >= QNetworkReply::ContentAccessDenied;
    return isResponse ? FeedFailure::badResponse : FeedFailure::noResponse;
}

} // namespace

FeedFetcher::FeedFetcher(FeedLimits limits, ProxyLookup::Resolver proxy, QObject* parent)
    : QObject(parent), m_limits(limits), m_proxies(std::move(proxy))
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, &FeedFetcher::abort);
    connect(&m_proxies, &ProxyLookup::found, this, &FeedFetcher::request);
}

FeedFetcher::~FeedFetcher()
{
    // Destroying `m_network` finishes the reply, which must no longer call this object.
    if (m_reply)
        m_reply->disconnect(this);
}

bool FeedFetcher::mayFetch(const QUrl& url)
{
    // Look for "@" instead of a user name, because an empty user name is not allowed either.
    if (!url.isValid() || url.host().isEmpty() || url.authority().contains(QLatin1Char('@')))
        return false;
    return url.scheme() == QLatin1String("https") ||
           (url.scheme() == QLatin1String("http") && isLoopback(url));
}

void FeedFetcher::fetch(const QUrl& url)
{
    m_url = url;
    m_document.clear();
    m_tooLarge = false;
    m_isFetching = true;
    m_redirects = 0;
    m_deadline.start(m_limits.time);
    if (isLoopback(url))
        request(QNetworkProxy::NoProxy);
    else
        m_proxies.start(url);
}

void FeedFetcher::request(const QNetworkProxy& proxy)
{
    // The time limit may have passed while the proxy was looked up.
    if (!m_isFetching || m_reply)
        return;
    m_network.setProxy(proxy);
    m_reply = m_network.get(feedRequest(m_url));
    m_reply->setReadBufferSize(m_limits.bytes + 1);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &FeedFetcher::readHeaders);
    connect(m_reply, &QNetworkReply::readyRead, this, &FeedFetcher::readBody);
    // Queued, because the other handlers may abort the reply: they return before `finish` is called.
    connect(m_reply, &QNetworkReply::finished, this, &FeedFetcher::finish, Qt::QueuedConnection);
}

void FeedFetcher::readHeaders()
{
    const QUrl target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (!target.isEmpty())
        return redirect(m_url.resolved(target));
    if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() <= m_limits.bytes)
        return;
    m_tooLarge = true;
    m_reply->abort();
}

void FeedFetcher::redirect(const QUrl& target)
{
    constexpr int maxRedirects = 5;
    if (!mayFetch(target) || !isSameOrigin(m_url, target) || ++m_redirects > maxRedirects)
        return m_reply->abort();
    // The body of a redirect is not needed.
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply->deleteLater();
    m_reply.clear();
    m_url = target;
    request(m_network.proxy());
}

void FeedFetcher::readBody()
{
    m_document += m_reply->read(m_limits.bytes + 1 - m_document.size());
    if (m_document.size() <= m_limits.bytes)
        return;
    m_tooLarge = true;
    m_reply->abort();
}

void FeedFetcher::abort()
{
    if (m_reply)
        m_reply->abort();
    else
        finish();
}

void FeedFetcher::finish()
{
    m_deadline.stop();
    m_isFetching = false;
    QNetworkReply* const reply = m_reply;
    m_reply.clear();
    const auto error = reply ? reply->error() : QNetworkReply::TimeoutError;
    const int status = reply ? reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() : 0;
    if (reply)
        reply->deleteLater();
    if (m_tooLarge)
        Q_EMIT failed(tr("The update information is too large, so it was ignored."),
                      FeedFailure::badResponse);
    else if (error != QNetworkReply::NoError || status != 200)
        Q_EMIT failed(tr("Stackreel could not reach its update information. Please try again later."),
                      failureFor(error));
    else
        Q_EMIT received(m_document);
}

} // namespace stackreel
