#include "updates/StandardUpdateServices.h"

#include "updates/UpdateMessageBoxes.h"

#include <QDesktopServices>

namespace stackreel
{

UpdateServices standardUpdateServices()
{
    return {.notifier = std::make_shared<UpdateMessageBoxes>(&QDesktopServices::openUrl),
            .store = UpdateStore(UpdateStore::standardFile())};
}

} // namespace stackreel
