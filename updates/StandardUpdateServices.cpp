#include "updates/StandardUpdateServices.h"

#include "system/UnblockedSignals.h"
#include "updates/UpdateMessageBoxes.h"

#include <QDesktopServices>

namespace stackreel
{

namespace
{

bool openPage(const QUrl& page)
{
    const UnblockedSignals unblocked; // for the browser
    return QDesktopServices::openUrl(page);
}

} // namespace

UpdateServices standardUpdateServices()
{
    return {.notifier = std::make_shared<UpdateMessageBoxes>(&openPage),
            .store = UpdateStore(UpdateStore::standardFile())};
}

} // namespace stackreel
