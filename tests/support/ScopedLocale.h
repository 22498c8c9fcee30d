#pragma once

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <locale>
#include <string>

namespace stackreel
{

/// Sets a locale with a decimal comma and grouped thousands for the C and the C++ library while the object
/// exists. The locale is compiled by `localedef`, so only `localedef` and the locale sources must be
/// installed.
class ScopedCommaLocale
{
public:
    ScopedCommaLocale();
    ~ScopedCommaLocale();
    ScopedCommaLocale(const ScopedCommaLocale&) = delete;
    ScopedCommaLocale& operator=(const ScopedCommaLocale&) = delete;

private:
    TemporaryDirectory m_directory;
    ScopedEnvironment m_places;
    std::string m_before;
    std::locale m_libraryBefore;
};

} // namespace stackreel
