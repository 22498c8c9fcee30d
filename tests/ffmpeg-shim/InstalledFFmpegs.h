#pragma once

#include "tests/support/TemporaryDirectory.h"

#include <string>
#include <vector>

namespace stackreel::shim
{

/// An FFmpeg that the tests run.
struct InstalledFFmpeg {
    std::string version; ///< as `ffmpeg -version` prints it
    std::string path;    ///< a value of PATH with which its programs are found first
};

/// The system's FFmpeg, and those of other Debian releases: each root below STACKREEL_ROOTS, or below
/// `build/roots` of the source tree, that contains `usr/bin/ffmpeg`. The programs of such a root run with its
/// own loader and libraries, without chroot.
class InstalledFFmpegs
{
public:
    /// Throws `std::runtime_error` when one of them does not run.
    InstalledFFmpegs();

    /// Never empty.
    const std::vector<InstalledFFmpeg>& all() const { return m_all; }
    /// The versions as one line of text.
    std::string names() const;

private:
    void add(const std::string& path);

    TemporaryDirectory m_wrappers;
    std::vector<InstalledFFmpeg> m_all;
};

} // namespace stackreel::shim
