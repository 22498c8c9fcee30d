#pragma once

#include "updates/UpdateFeed.h"

#include <QString>

namespace stackreel
{

/// Shows the updater's messages to the user. No call blocks. Main thread.
class UpdateNotifier
{
public:
    virtual ~UpdateNotifier() = default;

    /// Shows a newer version with its notes as plain text, and offers to open its download page. A message
    /// that the user did not request must not take the keyboard focus from other work.
    virtual void showUpdate(const UpdateRelease& release, const QString& installedVersion,
                            bool userRequested) = 0;
    /// Shows that the check that the user requested found no newer version.
    virtual void showUpToDate(const QString& installedVersion) = 0;
    /// Shows that the check that the user requested failed. `sentence` is the reason.
    virtual void showError(const QString& sentence) = 0;
};

} // namespace stackreel
