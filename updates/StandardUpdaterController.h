#pragma once

#include "updates/FeedFetcher.h"
#include "updates/FeedSignature.h"
#include "updates/UpdateNotifier.h"
#include "updates/UpdateStore.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace stackreel
{

/// The installed program and the source of its updates. UTF-8.
struct UpdateConfiguration {
    std::string feedURL;          ///< https, or http to a loopback address
    std::string publicKey;        ///< Ed25519, base64
    std::string installedVersion; ///< in the format of `UpdateVersion::parse`
};

/// When background checks run. A check is due a day after the last one, whether that ran in the background or
/// was requested. After a check without a response, the next is due an hour later; this is forgotten when the
/// program ends. A timer polls whether a check is due, because a timer of a day stops while the computer
/// sleeps and the clock does not.
struct UpdateSchedule {
    std::chrono::milliseconds initialDelay = std::chrono::seconds(5); ///< keeps the program's start fast
    std::chrono::milliseconds pollInterval = std::chrono::minutes(30);
    std::chrono::system_clock::duration checkInterval = std::chrono::hours(24);
    std::chrono::system_clock::duration retryInterval = std::chrono::hours(1);
};

/// The services that the updater uses; tests replace them.
struct UpdateServices {
    std::shared_ptr<UpdateNotifier> notifier; ///< never null
    UpdateStore store;
    std::function<std::chrono::system_clock::time_point()> now = std::chrono::system_clock::now;
    UpdateSchedule schedule = {};
    FeedLimits limits = {};
    ProxyLookup::Resolver proxy = &ProxyLookup::systemProxy;
};

/// The standard updater: reads the update feed once a day in the background, and when the user requests it.
///
/// Shows a newer version with its notes and a link to its download page. Never downloads or installs
/// anything. Shows "nothing new" and errors only when the user requested the check. Accepts a feed only if
/// its signature is valid and its serial is not below the highest accepted one, which `UpdateStore` keeps.
/// Main thread only; needs a running event loop.
class StandardUpdaterController : public QObject
{
    Q_OBJECT
public:
    /// Starts the background checks if `startingUpdater` is true. If it is false, the object does nothing,
    /// even when the user requests a check.
    StandardUpdaterController(bool startingUpdater, UpdateConfiguration configuration,
                              UpdateServices services, QObject* parent = nullptr);

    /// Starts a check on the user's request, which shows exactly one message at its end. If a background
    /// check is running, it counts as requested from now on. The sender is ignored and may be null.
    void checkForUpdates(QObject* sender);

Q_SIGNALS:
    /// A check has finished. Emitted after its message, if any, is shown.
    void checkFinished();

private:
    void checkIfDue();
    bool isDue() const;
    void check();
    void receive(const QByteArray& document);
    void handleFetchFailure(const QString& sentence, FeedFailure failure);
    void evaluate(const QByteArray& document);
    void finishWithError(const QString& sentence);

    const bool m_started;
    const UpdateConfiguration m_configuration;
    const std::optional<FeedKey> m_key;
    UpdateServices m_services;
    FeedFetcher m_fetcher;
    QTimer m_timer;
    std::optional<UpdateStore::Time> m_lastAttempt;
    bool m_userRequested = false; ///< whether the user requested the running check
};

} // namespace stackreel
