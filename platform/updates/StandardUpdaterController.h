#pragma once

#include "platform/updates/FeedFetcher.h"
#include "platform/updates/FeedSignature.h"
#include "platform/updates/UpdateMessages.h"
#include "platform/updates/UpdateStore.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace stackreel
{

/// What is to be kept up to date, and from where. UTF-8.
struct UpdateConfiguration {
    std::string feedURL;          ///< https, or http to a loopback address
    std::string publicKey;        ///< Ed25519, base64
    std::string installedVersion; ///< as `UpdateVersion::parse` takes it
};

/// When the updater looks whether a check is due. A check is due a day after the last one, whoever asked for
/// that; one to which no server answered counts for an hour, and only in this run. The clock of the day goes
/// on while the machine sleeps and a timer does not, hence the short steps.
struct UpdateSchedule {
    std::chrono::milliseconds firstLook = std::chrono::seconds(5); ///< leaves the start of the program alone
    std::chrono::milliseconds nextLooks = std::chrono::minutes(30);
    std::chrono::system_clock::duration betweenChecks = std::chrono::hours(24);
    std::chrono::system_clock::duration betweenTries = std::chrono::hours(1);
};

/// What the updater asks of the world.
struct UpdateServices {
    std::shared_ptr<UpdateMessages> messages; ///< must be there
    UpdateStore store;
    std::function<std::chrono::system_clock::time_point()> now = std::chrono::system_clock::now;
    UpdateSchedule schedule = {};
    FeedLimits limits = {};
    ProxyLookup::Choice proxy = &ProxyLookup::systemChoice;
};

/// The standard updater: reads the update feed once a day in the background, and whenever the user asks.
///
/// A newer version is shown with its notes and the way to its download page; nothing is ever downloaded or
/// installed. The outcome "nothing new" and any trouble are told only to a user who asked: they are silent in
/// the background. A feed counts only when its signature fits and it is not older than the newest one seen,
/// which the store remembers. Main thread only; an event loop has to run.
class StandardUpdaterController : public QObject
{
    Q_OBJECT
public:
    /// Starts the background checks when `startingUpdater` is true. Otherwise the object stays inert: it
    /// never checks, not even when asked.
    StandardUpdaterController(bool startingUpdater, UpdateConfiguration configuration,
                              UpdateServices services, QObject* parent = nullptr);

    /// A check on the user's behalf, which ends in exactly one message. A check already under way becomes the
    /// user's. The sender is of no account and may be null.
    void checkForUpdates(QObject* sender);

Q_SIGNALS:
    /// A check has ended, after its message if it has one.
    void checkFinished();

private:
    void checkIfDue();
    bool isDue() const;
    void check();
    void receive(const QByteArray& document);
    void endWithoutDocument(const QString& sentence, FeedTrouble trouble);
    void judge(const QByteArray& document);
    void endInTrouble(const QString& sentence);

    const bool m_started;
    const UpdateConfiguration m_configuration;
    const std::optional<FeedKey> m_key;
    UpdateServices m_services;
    FeedFetcher m_fetcher;
    QTimer m_schedule;
    std::optional<UpdateStore::Time> m_lastTry;
    bool m_asked = false; ///< the user waits for the check that is under way
};

} // namespace stackreel
