#pragma once

#include "tests/support/TemporaryDirectory.h"

#include <string>
#include <vector>

namespace stackreel::shim
{

/// An FFmpeg that the tests run.
struct InstalledFFmpeg {
    std::string version; ///< as `ffmpeg -version` names it
    std::string path;    ///< a PATH on which its programs are found first
};

/// The system's FFmpeg, and those of other systems in folders below STACKREEL_ROOTS, or below `build/roots`
/// of the source tree: each folder that holds `usr/bin/ffmpeg`. Programs of another system run with its own
/// loader and libraries, without chroot.
class InstalledFFmpegs
{
public:
    InstalledFFmpegs();

    const std::vector<InstalledFFmpeg>& all() const { return m_all; }
    /// The versions in one line.
    std::string names() const;

private:
    void add(const std::string& path);

    TemporaryDirectory m_wrappers;
    std::vector<InstalledFFmpeg> m_all;
};

} // namespace stackreel::shim
