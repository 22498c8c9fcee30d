#pragma once

#include "platform/InfoDictionary.h"
#include "platform/updates/StandardUpdaterController.h"

#include <QObject>

namespace stackreel
{

/// Decides once, when it is built, whether this build has software updates, and owns the updater. One per
/// process, on the main thread only; it never changes.
///
///     UpdaterController updater(Bundle::infoDictionary(), standardUpdateServices());
///
/// (`platform/updates/StandardUpdateServices.h`, library `stackreel_update_dialogs`.) The menu command
/// "Check for Updates…" calls `checkForUpdates` below, which asks `updatesEnabled` itself.
class UpdaterController : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool updatesEnabled READ updatesEnabled CONSTANT FINAL)
public:
    UpdaterController(const InfoDictionary& info, UpdateServices services, QObject* parent = nullptr);

    bool updatesEnabled() const { return m_updatesEnabled; }
    StandardUpdaterController& controller() { return m_controller; }

    /// The menu command: a check on the user's behalf when updates are enabled, otherwise nothing at all.
    Q_INVOKABLE void checkForUpdates();

    /// Whether a dictionary enables updates: its "SUPublicEDKey" is a string, not empty, and not the
    /// placeholder to the letter. Blanks and another case count as a key.
    static bool enablesUpdates(const InfoDictionary& info);

private:
    const bool m_updatesEnabled;
    StandardUpdaterController m_controller;
};

} // namespace stackreel
