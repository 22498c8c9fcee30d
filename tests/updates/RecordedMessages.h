#pragma once

#include "platform/updates/UpdateMessages.h"

#include <string>
#include <vector>

namespace stackreel
{

/// Messages that are written down instead of shown, each as one line.
class RecordedMessages : public UpdateMessages
{
public:
    void showUpdate(const UpdateRelease& release, const QString& installedVersion, bool asked) override
    {
        said.push_back((asked ? "update " : "unasked update ") + release.versionText + " for " +
                       installedVersion.toStdString() + ": " + release.notes + " at " + release.downloadPage);
    }
    void showUpToDate(const QString& installedVersion) override
    {
        said.push_back("up to date with " + installedVersion.toStdString());
    }
    void showTrouble(const QString& sentence) override { said.push_back(sentence.toStdString()); }

    std::vector<std::string> said;
};

} // namespace stackreel
