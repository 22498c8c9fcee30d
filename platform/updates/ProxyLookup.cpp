#include "platform/updates/ProxyLookup.h"

#include <QNetworkProxyFactory>

#include <mutex>
#include <system_error>
#include <thread>

namespace stackreel
{

/// Where a thread that nobody waits for finds whom to tell.
struct ProxyLookup::Mailbox {
    std::mutex mutex;
    ProxyLookup* receiver = nullptr; ///< null when it is gone
};

QNetworkProxy ProxyLookup::systemChoice(const QUrl& url)
{
    const QList<QNetworkProxy> proxies = QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
    // The default of the toolkit would be to ask again, on the main thread.
    if (proxies.isEmpty() || proxies.first().type() == QNetworkProxy::DefaultProxy)
        return QNetworkProxy::NoProxy;
    return proxies.first();
}

ProxyLookup::ProxyLookup(Choice choice, QObject* parent)
    : QObject(parent), m_choice(std::move(choice)), m_mailbox(std::make_shared<Mailbox>())
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
    if (std::exchange(m_isOpen, true))
        return;
    const auto ask = [choice = m_choice, mailbox = m_mailbox, url] {
        const QNetworkProxy proxy = choice(url);
        const std::scoped_lock lock(mailbox->mutex);
        if (ProxyLookup* const receiver = mailbox->receiver)
            QMetaObject::invokeMethod(
                receiver, [receiver, proxy] { receiver->conclude(proxy); }, Qt::QueuedConnection);
    };
    try {
        std::thread(ask).detach();
    } catch (const std::system_error&) {
        // There are no threads left; the next question may fare better.
        m_isOpen = false;
    }
}

void ProxyLookup::conclude(const QNetworkProxy& proxy)
{
    m_isOpen = false;
    Q_EMIT found(proxy);
}

} // namespace stackreel
