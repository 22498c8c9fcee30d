#pragma once

#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <locale>
#include <string>

namespace stackreel
{

/// A locale that writes a comma for the decimal point and groups thousands, for the C and the C++ library,
/// until the object goes. It is made on the spot, so none needs to be installed; the system's locale sources
/// and `localedef` have to be.
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
