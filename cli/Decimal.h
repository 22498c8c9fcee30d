#pragma once

#include <string>

namespace stackreel
{

/// A finite number with a fixed count of decimals after a full stop, in every locale.
std::string fixedDecimal(double value, int decimals);

} // namespace stackreel
