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
      m_fetcher(m_services.limits, m_services.proxy)
{
    if (!m_started)
        return;
    connect(&m_fetcher, &FeedFetcher::received, this, &StandardUpdaterController::receive);
    connect(&m_fetcher, &FeedFetcher::failed, this, &StandardUpdaterController::endWithoutDocument);
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
    if (!m_fetcher.isFetching() && isDue())
        check();
}

bool StandardUpdaterController::isDue() const
{
    const auto now = m_services.now();
    const auto isOver = [now](const auto& last, auto wait) {
        // A last time in the future comes from a clock that was wrong, and would put off all others.
        return !last || *last > now || now - *last >= wait;
    };
    return isOver(m_lastTry, m_services.schedule.betweenTries) &&
           isOver(m_services.store.lastCheck(), m_services.schedule.betweenChecks);
}

void StandardUpdaterController::check()
{
    m_lastTry = m_services.now();
    const QUrl url(QString::fromStdString(m_configuration.feedURL), QUrl::StrictMode);
    if (!m_key || !FeedFetcher::mayFetch(url) || !UpdateVersion::parse(m_configuration.installedVersion))
        return endInTrouble(tr("This copy of Stackreel cannot check for updates."));
    m_fetcher.fetch(url);
}

void StandardUpdaterController::receive(const QByteArray& document)
{
    m_services.store.setLastCheck(m_services.now());
    try {
        judge(document);
    } catch (const UpdateError& error) {
        endInTrouble(QString::fromUtf8(error.what()));
    }
}

void StandardUpdaterController::endWithoutDocument(const QString& sentence, FeedTrouble trouble)
{
    // A server that is out of order is not asked all day; one that could not be reached soon may be.
    if (trouble == FeedTrouble::badAnswer)
        m_services.store.setLastCheck(m_services.now());
    endInTrouble(sentence);
}

void StandardUpdaterController::judge(const QByteArray& document)
{
    const UpdateFeed feed = acceptedFeed({document.constData(), static_cast<std::size_t>(document.size())},
                                         *m_key, m_services.store.newestSerial());
    m_services.store.setNewestSerial(feed.serial);
    const bool asked = std::exchange(m_asked, false);
    const QString installed = QString::fromStdString(m_configuration.installedVersion);
    if (feed.newest().version > *UpdateVersion::parse(m_configuration.installedVersion))
        m_services.messages->showUpdate(feed.newest(), installed, asked);
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
