#include "platform/updates/StandardUpdaterController.h"

#include "platform/updates/UpdateError.h"
#include "platform/updates/UpdateFeed.h"

#include <QUrl>

#include <utility>

namespace stackreel
{

StandardUpdaterController::StandardUpdaterController(bool startingUpdater, UpdateConfiguration configuration,
                                                     UpdateServices services, QObject* parent)
    : QObject(parent),
      m_started(startingUpdater),
      m_configuration(std::move(configuration)),
      m_key(FeedKey::fromBase64(m_configuration.publicKey)),
      m_services(std::move(services)),
      m_fetcher(m_services.limits)
{
    if (!m_started)
        return;
    connect(&m_fetcher, &FeedFetcher::received, this, &StandardUpdaterController::receive);
    connect(&m_fetcher, &FeedFetcher::failed, this, &StandardUpdaterController::endInTrouble);
    connect(&m_schedule, &QTimer::timeout, this, &StandardUpdaterController::checkIfDue);
    m_schedule.start(m_services.schedule.firstLook);
}

void StandardUpdaterController::checkForUpdates(QObject*)
{
    if (!m_started)
        return;
    m_asked = true;
    if (!m_fetcher.isFetching())
        check();
}

void StandardUpdaterController::checkIfDue()
{
    m_schedule.start(m_services.schedule.nextLooks);
    if (m_fetcher.isFetching())
        return;
    const auto last = m_services.store.lastCheck();
    const auto now = m_services.now();
    // A last check in the future comes from a clock that was wrong, and would put off all others.
    if (!last || *last > now || now - *last >= m_services.schedule.betweenChecks)
        check();
}

void StandardUpdaterController::check()
{
    // Whatever comes of it, this was the check of the day: a feed that is out of order is not asked all day.
    m_services.store.setLastCheck(m_services.now());
    const QUrl url(QString::fromStdString(m_configuration.feedURL), QUrl::StrictMode);
    if (!m_key || !FeedFetcher::mayFetch(url) || !UpdateVersion::parse(m_configuration.installedVersion))
        return endInTrouble(tr("This copy of Stackreel cannot check for updates."));
    m_fetcher.fetch(url);
}

void StandardUpdaterController::receive(const QByteArray& document)
{
    try {
        judge(document);
    } catch (const UpdateError& error) {
        endInTrouble(QString::fromUtf8(error.what()));
    }
}

void StandardUpdaterController::judge(const QByteArray& document)
{
    const UpdateFeed feed = acceptedFeed({document.constData(), static_cast<std::size_t>(document.size())},
                                         *m_key, m_services.store.newestSerial());
    m_services.store.setNewestSerial(feed.serial);
    const bool asked = std::exchange(m_asked, false);
    const QString installed = QString::fromStdString(m_configuration.installedVersion);
    if (feed.newest().version > *UpdateVersion::parse(m_configuration.installedVersion))
        m_services.messages->showUpdate(feed.newest(), installed);
    else if (asked)
        m_services.messages->showUpToDate(installed);
    Q_EMIT checkFinished();
}

void StandardUpdaterController::endInTrouble(const QString& sentence)
{
    if (std::exchange(m_asked, false))
        m_services.messages->showTrouble(sentence);
    Q_EMIT checkFinished();
}

} // namespace stackreel
