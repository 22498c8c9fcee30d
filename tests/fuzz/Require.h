#pragma once

#include <cstdio>
#include <cstdlib>

namespace stackreel
{

/// Ends the program, which the fuzzer takes for a finding, unless the rule holds.
inline void require(bool holds, const char* rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken rule: %s\n", rule);
    std::abort();
}

} // namespace stackreel
