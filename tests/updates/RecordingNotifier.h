#pragma once

#include "updates/UpdateNotifier.h"

#include <string>
#include <vector>

namespace stackreel
{

/// Records each message as one line instead of showing it.
class RecordingNotifier : public UpdateNotifier
{
public:
    void showUpdate(const UpdateRelease& release, const QString& installedVersion,
                    bool userRequested) override
    {
        shown.push_back((userRequested ? "update " : "background update ") + release.versionText + " for " +
                        installedVersion.toStdString() + ": " + release.notes + " at " +
                        release.downloadPage);
    }
    void showUpToDate(const QString& installedVersion) override
    {
        shown.push_back("up to date with " + installedVersion.toStdString());
    }
    void showError(const QString& sentence) override { shown.push_back(sentence.toStdString()); }

    std::vector<std::string> shown;
};

} // namespace stackreel
