#pragma once

#include <QNetworkProxy>
#include <QObject>
#include <QUrl>

#include <functional>
#include <memory>

namespace stackreel
{

/// Looks up the proxy for an address without blocking the calling thread. For the lookup, the desktop may
/// have to fetch and run a script, which cannot be cancelled. Main thread.
class ProxyLookup : public QObject
{
    Q_OBJECT
public:
    /// Returns the proxy for an address. Runs on a thread of its own, may block for any time, and may still
    /// run after this object is destroyed.
    using Resolver = std::function<QNetworkProxy(const QUrl&)>;

    /// The proxy in the desktop's settings.
    static QNetworkProxy systemProxy(const QUrl& url);

    explicit ProxyLookup(Resolver resolver, QObject* parent = nullptr);
    /// Does not wait for a pending lookup.
    ~ProxyLookup() override;

    /// Starts a lookup. `found` is emitted when it has finished, which may never happen. If a lookup is
    /// already pending, no other is started, and the pending one also serves this call.
    void start(const QUrl& url);

Q_SIGNALS:
    void found(const QNetworkProxy& proxy);

private:
    struct Mailbox;

    Q_INVOKABLE void finish();
    QNetworkProxy result() const;

    const Resolver m_resolver;
    const std::shared_ptr<Mailbox> m_mailbox;
    bool m_isPending = false; ///< a lookup was started and has not finished
};

} // namespace stackreel
