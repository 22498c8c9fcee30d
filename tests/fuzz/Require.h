#pragma once

#include <cstdio>
#include <cstdlib>

namespace stackreel
{

/// Aborts the program if `holds` is false. The fuzzer reports an abort as a finding.
inline void require(bool holds, const char* rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken rule: %s\n", rule);
    std::abort();
}

} // namespace stackreel
