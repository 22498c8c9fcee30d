#pragma once

#include <string>

namespace stackreel
{

/// A finite number with a fixed count of decimals behind a full stop, whatever the locale.
std::string fixedDecimal(double value, int decimals);

} // namespace stackreel
