// Writes the colour tables into a folder, which is its only argument. The build runs it once.
#include "colour/ColourTable.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

using namespace stackreel;

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: colour_tables FOLDER\n", stderr);
        return 2;
    }
    for (const ColourTable& table : colourTables()) {
        const std::string path = std::string(argv[1]) + "/" + table.name + ".cube";
        std::ofstream file(path);
        file << cubeFile(table, colourTablePoints);
        if (!file.flush()) {
            std::fprintf(stderr, "%s: %s\n", path.c_str(), std::strerror(errno));
            return 1;
        }
    }
    return 0;
}
