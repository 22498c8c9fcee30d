#pragma once

#include "system/InfoDictionary.h"
#include "updates/StandardUpdaterController.h"

#include <QObject>

namespace stackreel
{

/// Owns the updater. The constructor decides whether this build has software updates, which never changes
/// after that. One per process, on the main thread only.
///
///     UpdaterController updater(Bundle::infoDictionary(), standardUpdateServices());
///
/// (`updates/StandardUpdateServices.h`, library `stackreel_update_dialogs`.) The menu command
/// "Check for Updates…" calls `checkForUpdates` below, which checks `updatesEnabled` itself.
class UpdaterController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool updatesEnabled READ updatesEnabled CONSTANT FINAL)
public:
    UpdaterController(const InfoDictionary& info, UpdateServices services, QObject* parent = nullptr);

    bool updatesEnabled() const { return m_updatesEnabled; }
    StandardUpdaterController& controller() { return m_controller; }

    /// The menu command. Checks for updates if they are enabled, otherwise does nothing.
    Q_INVOKABLE void checkForUpdates();

    /// Whether a dictionary enables updates: its "SUPublicEDKey" is a string that is not empty and not
    /// exactly the placeholder. The placeholder with added blanks or in another case counts as a key.
    static bool enablesUpdates(const InfoDictionary& info);

private:
    const bool m_updatesEnabled;
    StandardUpdaterController m_controller;
};

} // namespace stackreel
