#pragma once

#include "updates/ProxyLookup.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>

#include <chrono>

class QNetworkReply;

namespace stackreel
{

/// The limits of one fetch.
struct FeedLimits {
    qint64 bytes = 256 * 1024;
    std::chrono::milliseconds time = std::chrono::seconds(10); ///< for the whole fetch, with redirects
};

/// Why a fetch has failed.
enum class FeedFailure {
    noResponse, ///< no server was reached, the connection broke, or its certificate is not trusted
    badResponse ///< a server was reached, but sent no valid document
};

/// Fetches one small document over HTTPS, or over HTTP from a loopback address, through the desktop's proxy.
/// Follows redirects only to the same scheme, host and port. Aborts the transfer at the first byte beyond the
/// size limit, at the time limit, and in the destructor. Sends and keeps no cookies. Main thread; no call
/// blocks.
class FeedFetcher : public QObject
{
    Q_OBJECT
public:
    explicit FeedFetcher(FeedLimits limits, ProxyLookup::Resolver proxy = &ProxyLookup::systemProxy,
                         QObject* parent = nullptr);
    ~FeedFetcher() override;

    /// Whether an address may be fetched: it is https, or http to a loopback address, and has no user name.
    static bool mayFetch(const QUrl& url);

    bool isFetching() const { return m_isFetching; }
    /// Starts to fetch an address that `mayFetch` allows. Emits exactly one of the signals, always after this
    /// call has returned. Must not be called while `isFetching`.
    void fetch(const QUrl& url);

Q_SIGNALS:
    /// The complete document, as the server sent it with status 200.
    void received(const QByteArray& document);
    /// The fetch has failed. `sentence` is shown to the user.
    void failed(const QString& sentence, FeedFailure failure);

private:
    void request(const QNetworkProxy& proxy);
    void readHeaders();
    void redirect(const QUrl& target);
    void readBody();
    void abort();
    void finish();

    const FeedLimits m_limits;
    ProxyLookup m_proxies;
    QNetworkAccessManager m_network;
    QPointer<QNetworkReply> m_reply; ///< null until the proxy is known
    QTimer m_deadline;
    QUrl m_url; ///< the address to fetch: that of the document, or the target of the last redirect
    int m_redirects = 0;
    QByteArray m_document;
    bool m_isFetching = false;
    bool m_tooLarge = false;
};

} // namespace stackreel
