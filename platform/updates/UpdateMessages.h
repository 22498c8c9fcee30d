#pragma once

#include "platform/updates/UpdateFeed.h"

#include <QString>

namespace stackreel
{

/// How the updater talks to the user. No call waits for an answer. Main thread.
class UpdateMessages
{
public:
    virtual ~UpdateMessages() = default;

    /// There is a newer version; shows its notes as plain text and offers to open its download page. When the
    /// user did not ask, it comes in the middle of other work and must not take the keyboard from that.
    virtual void showUpdate(const UpdateRelease& release, const QString& installedVersion, bool asked) = 0;
    /// The user asked, and has the newest version.
    virtual void showUpToDate(const QString& installedVersion) = 0;
    /// The user asked, and the question cannot be answered; one short sentence says so.
    virtual void showTrouble(const QString& sentence) = 0;
};

} // namespace stackreel
