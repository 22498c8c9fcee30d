#pragma once

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

/// Fetches one small document over HTTPS, or over HTTP from a loopback address. Redirects are followed only
/// to the same scheme, host and port. The transfer is given up at the first byte beyond the limit, when the
/// time is over, and with the object. Sends and keeps no cookies. Main thread.
class FeedFetcher : public QObject
{
    Q_OBJECT
public:
    explicit FeedFetcher(FeedLimits limits, QObject* parent = nullptr);
    ~FeedFetcher() override;

    static bool mayFetch(const QUrl& url);

    bool isFetching() const { return !m_reply.isNull(); }
    /// Starts to fetch an address that `mayFetch` allows; ends in exactly one signal, never before it
    /// returns. Nothing may be under way.
    void fetch(const QUrl& url);

Q_SIGNALS:
    /// The complete document, as the server sent it with status 200.
    void received(const QByteArray& document);
    /// There is none; a sentence for the user says so.
    void failed(const QString& sentence);

private:
    void readHeaders();
    void readBody();
    void conclude();

    const FeedLimits m_limits;
    QNetworkAccessManager m_network;
    QPointer<QNetworkReply> m_reply;
    QTimer m_deadline;
    QByteArray m_document;
    bool m_tooLarge = false;
};

} // namespace stackreel
