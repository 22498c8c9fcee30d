#pragma once

namespace stackreel
{

/// The version of this build, such as "0.1.0".
const char* buildVersion();

} // namespace stackreel
