#include "platform/updates/FeedFetcher.h"

#include <QHostAddress>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace stackreel
{

namespace
{

QNetworkRequest request(const QUrl& url)
{
    constexpr int mostRedirects = 5;
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Stackreel/" STACKREEL_VERSION));
    // Asked for so, Qt unpacks nothing, and the limit counts what the server sends.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

} // namespace

FeedFetcher::FeedFetcher(FeedLimits limits, QObject* parent) : QObject(parent), m_limits(limits)
{
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { m_reply->abort(); });
}

FeedFetcher::~FeedFetcher()
{
    // The reply ends with the network object, and must not report to this one any more.
    if (m_reply)
        m_reply->disconnect(this);
}

bool FeedFetcher::mayFetch(const QUrl& url)
{
    if (!url.isValid() || url.host().isEmpty() || !url.userInfo().isEmpty())
        return false;
    const bool isLoopback = QHostAddress(url.host()).isLoopback();
    return url.scheme() == QLatin1String("https") || (url.scheme() == QLatin1String("http") && isLoopback);
}

void FeedFetcher::fetch(const QUrl& url)
{
    m_document.clear();
    m_tooLarge = false;
    m_reply = m_network.get(request(url));
    m_reply->setReadBufferSize(m_limits.bytes + 1);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &FeedFetcher::readHeaders);
    connect(m_reply, &QNetworkReply::readyRead, this, &FeedFetcher::readBody);
    // Queued, so that an abort from within another of these handlers ends after that.
    connect(m_reply, &QNetworkReply::finished, this, &FeedFetcher::conclude, Qt::QueuedConnection);
    m_deadline.start(m_limits.time);
}

void FeedFetcher::readHeaders()
{
    if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() <= m_limits.bytes)
        return;
    m_tooLarge = true;
    m_reply->abort();
}

void FeedFetcher::readBody()
{
    m_document += m_reply->read(m_limits.bytes + 1 - m_document.size());
    if (m_document.size() <= m_limits.bytes)
        return;
    m_tooLarge = true;
    m_reply->abort();
}

void FeedFetcher::conclude()
{
    QNetworkReply* const reply = m_reply;
    m_deadline.stop();
    m_reply.clear();
    reply->deleteLater();
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_tooLarge)
        Q_EMIT failed(tr("The update information is too large, so it was ignored."));
    else if (reply->error() != QNetworkReply::NoError || status != 200)
        Q_EMIT failed(tr("Stackreel could not reach its update information. Please try again later."));
    else
        Q_EMIT received(m_document);
}

} // namespace stackreel
