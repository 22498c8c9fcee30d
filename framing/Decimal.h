#pragma once

#include <string>

namespace stackreel
{

/// A finite number with a full stop and a fixed number of decimals, independent of the locale.
std::string fixedDecimal(double value, int decimals);

} // namespace stackreel
