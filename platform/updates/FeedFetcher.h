#pragma once

#include "platform/updates/ProxyLookup.h"

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

/// What a feed may cost.
struct FeedLimits {
    qint64 bytes = 256 * 1024;
    std::chrono::milliseconds time = std::chrono::seconds(10); ///< for all of it, redirects included
};

/// Why there is no document.
enum class FeedTrouble {
    noAnswer, ///< the way there is closed, cut or not to be trusted, as it is without a connection
    badAnswer ///< a server answered, with something else
};

/// Fetches one small document over HTTPS, or over HTTP from a loopback address, through the proxy that the
/// desktop is set to. Redirects are followed only to the same scheme, host and port. The transfer is given up
/// at the first byte beyond the limit, when the time is over, and with the object. Sends and keeps no
/// cookies. Main thread, which nothing here holds up.
class FeedFetcher : public QObject
{
    Q_OBJECT
public:
    explicit FeedFetcher(FeedLimits limits, ProxyLookup::Choice proxy = &ProxyLookup::systemChoice,
                         QObject* parent = nullptr);
    ~FeedFetcher() override;

    /// Whether an address is a secure one, or of a loopback address, and holds no user name.
    static bool mayFetch(const QUrl& url);

    bool isFetching() const { return m_isFetching; }
    /// Starts to fetch an address that `mayFetch` allows; ends in exactly one signal, never before it
    /// returns. Nothing may be under way.
    void fetch(const QUrl& url);

Q_SIGNALS:
    /// The complete document, as the server sent it with status 200.
    void received(const QByteArray& document);
    /// There is none; a sentence for the user says so.
    void failed(const QString& sentence, FeedTrouble trouble);

private:
    void request(const QNetworkProxy& proxy);
    void readHeaders();
    void redirect(const QUrl& target);
    void readBody();
    void giveUp();
    void conclude();

    const FeedLimits m_limits;
    ProxyLookup m_proxies;
    QNetworkAccessManager m_network;
    QPointer<QNetworkReply> m_reply; ///< null until the proxy is known
    QTimer m_deadline;
    QUrl m_url; ///< of the document, or of where the last redirect led
    int m_redirects = 0;
    QByteArray m_document;
    bool m_isFetching = false;
    bool m_tooLarge = false;
};

} // namespace stackreel
