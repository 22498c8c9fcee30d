#pragma once

namespace stackreel
{

/// The threads of this process, without one of GStreamer's for its clock, which starts when it is first
/// needed and never ends.
int threadCount();

/// What this process uses.
struct ProcessFigures {
    double memory = 0;   ///< MiB; what it has allocated (anonymous pages), without files and libraries
    double resident = 0; ///< MiB; all pages, with those of files and libraries (RSS)
    int descriptors = 0;
    int threads = 0;

    static ProcessFigures now();
};

} // namespace stackreel
