#include "app/UpdaterController.h"

#include "system/Version.h"

namespace stackreel
{

namespace
{

UpdateConfiguration configuration(const InfoDictionary& info)
{
    return {.feedURL = info.text("SUFeedURL").value_or(""),
            .publicKey = info.text("SUPublicEDKey").value_or(""),
            .installedVersion = buildVersion()};
}

} // namespace

UpdaterController::UpdaterController(const InfoDictionary& info, UpdateServices services, QObject* parent)
    : QObject(parent),
      m_updatesEnabled(enablesUpdates(info)),
      m_controller(m_updatesEnabled, configuration(info), std::move(services))
{
}

void UpdaterController::checkForUpdates()
{
    if (m_updatesEnabled)
        m_controller.checkForUpdates(nullptr);
}

bool UpdaterController::enablesUpdates(const InfoDictionary& info)
{
    const auto key = info.text("SUPublicEDKey");
    return key && !key->empty() && *key != "REPLACE_BEFORE_RELEASE";
}

} // namespace stackreel
