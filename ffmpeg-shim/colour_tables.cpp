// Writes the colour tables into a folder, which is its only argument. The build runs it once.
#include "ffmpeg-shim/ColourTable.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

using namespace stackreel::shim;

// With 33 points the largest error, of a strong green in PQ, is a ΔE (CIEDE2000) of 1.
constexpr int pointsPerComponent = 33;

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: colour_tables FOLDER\n", stderr);
        return 2;
    }
    for (const ColourTable& table : colourTables()) {
        const std::string path = std::string(argv[1]) + "/" + table.name + ".cube";
        std::ofstream file(path);
        file << cubeFile(table, pointsPerComponent);
        if (!file.flush()) {
            std::fprintf(stderr, "%s: %s\n", path.c_str(), std::strerror(errno));
            return 1;
        }
    }
    return 0;
}
