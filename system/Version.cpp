#include "system/Version.h"

namespace stackreel
{

const char* buildVersion()
{
    return STACKREEL_VERSION;
}

} // namespace stackreel
