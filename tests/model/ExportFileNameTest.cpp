#include "model/ExportFileName.h"

#include <gtest/gtest.h>

namespace stackreel
{

TEST(ExportFileName, IsTheSourcesNameWithoutItsLastExtension)
{
    struct Row {
        const char* source;
        const char* name;
    };
    const Row rows[] = {
        {"/clips/Beach day.MOV", "Beach day-vertical.mp4"},
        {"/clips/clip.final.mov", "clip.final-vertical.mp4"},
        {"/clips/clip", "clip-vertical.mp4"},
        {"/clips.old/clip", "clip-vertical.mp4"},
        {"clip.mp4", "clip-vertical.mp4"},
        {"/clips/.hidden", ".hidden-vertical.mp4"},
        {"/clips/.hidden.mov", ".hidden-vertical.mp4"},
        {"/clips/-dash 100% 'q\" 東京.mov", "-dash 100% 'q\" 東京-vertical.mp4"},
        {"/clips/\xFF\xFE.mov", "\xFF\xFE-vertical.mp4"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(exportFileName(row.source), std::filesystem::path(row.name)) << row.source;
}

} // namespace stackreel
