#include "updates/ProxyLookup.h"

#include <QNetworkProxyFactory>

#include <mutex>
#include <system_error>
#include <thread>

namespace stackreel
{

/// Shared with the detached thread, which may outlive the `ProxyLookup`.
struct ProxyLookup::Mailbox {
    std::mutex mutex;
    ProxyLookup* receiver = nullptr; ///< null after it is destroyed
    QNetworkProxy proxy;             ///< the latest result
};

QNetworkProxy ProxyLookup::systemProxy(const QUrl& url)
{
    const QList<QNetworkProxy> proxies = QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
    // With `DefaultProxy` Qt would query the system again, on the main thread.
    if (proxies.isEmpty() || proxies.first().type() == QNetworkProxy::DefaultProxy)
        return QNetworkProxy::NoProxy;
    return proxies.first();
}

ProxyLookup::ProxyLookup(Resolver resolver, QObject* parent)
    : QObject(parent), m_resolver(std::move(resolver)), m_mailbox(std::make_shared<Mailbox>())
{
    m_mailbox->receiver = this;
}

ProxyLookup::~ProxyLookup()
{
    const std::scoped_lock lock(m_mailbox->mutex);
    m_mailbox->receiver = nullptr;
}

void ProxyLookup::start(const QUrl& url)
{
    if (std::exchange(m_isPending, true))
        return;
    const auto resolve = [resolver = m_resolver, mailbox = m_mailbox, url] {
        const QNetworkProxy proxy = resolver(url);
        const std::scoped_lock lock(mailbox->mutex);
        mailbox->proxy = proxy;
        // Call it by name: Qt protects a function object by locks that the thread sanitizer does not see.
        if (mailbox->receiver)
            QMetaObject::invokeMethod(mailbox->receiver, "finish", Qt::QueuedConnection);
    };
    try {
        std::thread(resolve).detach();
    } catch (const std::system_error&) {
        // No thread could be started; a later call may succeed.
        m_isPending = false;
    }
}

void ProxyLookup::finish()
{
    m_isPending = false;
    Q_EMIT found(result());
}

QNetworkProxy ProxyLookup::result() const
{
    const std::scoped_lock lock(m_mailbox->mutex);
    return m_mailbox->proxy;
}

} // namespace stackreel
