#include "updates/StandardUpdaterController.h"

#include "updates/UpdateError.h"
#include "updates/UpdateFeed.h"

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
    connect(&m_fetcher, &FeedFetcher::failed, this, &StandardUpdaterController::handleFetchFailure);
    connect(&m_timer, &QTimer::timeout, this, &StandardUpdaterController::checkIfDue);
    m_timer.start(m_services.schedule.initialDelay);
}

void StandardUpdaterController::checkForUpdates(QObject*)
{
    if (!m_started)
        return;
    m_userRequested = true;
    if (!m_fetcher.isFetching())
        check();
}

void StandardUpdaterController::checkIfDue()
{
    m_timer.start(m_services.schedule.pollInterval);
    if (!m_fetcher.isFetching() && isDue())
        check();
}

bool StandardUpdaterController::isDue() const
{
    const auto now = m_services.now();
    const auto hasPassed = [now](const auto& last, auto interval) {
        // A time in the future was stored while the clock was wrong. It would delay all later checks, so it
        // is ignored.
        return !last || *last > now || now - *last >= interval;
    };
    return hasPassed(m_lastAttempt, m_services.schedule.retryInterval) &&
           hasPassed(m_services.store.lastCheck(), m_services.schedule.checkInterval);
}

void StandardUpdaterController::check()
{
    m_lastAttempt = m_services.now();
    const QUrl url(QString::fromStdString(m_configuration.feedURL), QUrl::StrictMode);
    if (!m_key || !FeedFetcher::mayFetch(url) || !UpdateVersion::parse(m_configuration.installedVersion))
        return finishWithError(tr("This copy of Stackreel cannot check for updates."));
    m_fetcher.fetch(url);
}

void StandardUpdaterController::receive(const QByteArray& document)
{
    m_services.store.setLastCheck(m_services.now());
    try {
        evaluate(document);
    } catch (const UpdateError& error) {
        finishWithError(QString::fromUtf8(error.what()));
    }
}

void StandardUpdaterController::handleFetchFailure(const QString& sentence, FeedFailure failure)
{
    // The next attempt is a day after a bad response, but only an hour after no response.
    if (failure == FeedFailure::badResponse)
        m_services.store.setLastCheck(m_services.now());
    finishWithError(sentence);
}

void StandardUpdaterController::evaluate(const QByteArray& document)
{
    const UpdateFeed feed = acceptedFeed({document.constData(), static_cast<std::size_t>(document.size())},
                                         *m_key, m_services.store.newestSerial());
    m_services.store.setNewestSerial(feed.serial);
    const bool userRequested = std::exchange(m_userRequested, false);
    const QString installed = QString::fromStdString(m_configuration.installedVersion);
    if (feed.newest().version > *UpdateVersion::parse(m_configuration.installedVersion))
        m_services.notifier->showUpdate(feed.newest(), installed, userRequested);
    else if (userRequested)
        m_services.notifier->showUpToDate(installed);
    Q_EMIT checkFinished();
}

void StandardUpdaterController::finishWithError(const QString& sentence)
{
    if (std::exchange(m_userRequested, false))
        m_services.notifier->showError(sentence);
    Q_EMIT checkFinished();
}

} // namespace stackreel
