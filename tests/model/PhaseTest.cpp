#include "model/Phase.h"

#include <gtest/gtest.h>

namespace stackreel
{

TEST(Phase, HasAMessageForEachCase)
{
    using Source = std::optional<std::filesystem::path>;
    struct Row {
        Phase phase;
        Source source;
        const char* message;
    };
    const Source none;
    const Source clip = "/Movies/clip one.mov";
    const Row rows[] = {
        {Phase::empty(), none, "Choose a horizontal video to begin."},
        {Phase::empty(), clip, "Choose a horizontal video to begin."},
        {Phase::preparing(), clip, "Preparing a smooth looping preview."},
        {Phase::ready(), none, "Ready"},
        {Phase::ready(), clip, "clip one.mov"},
        {Phase::ready(), "/東京/Été 100%.tar.MOV", "Été 100%.tar.MOV"},
        {Phase::exporting(), clip, "Rendering from the original video."},
        {Phase::complete("/out/a-vertical.mp4"), clip, "Saved a-vertical.mp4"},
        {Phase::complete("/out/a-vertical.mp4"), none, "Saved a-vertical.mp4"},
        {Phase::complete("/out/two  blanks .mp4"), none, "Saved two  blanks .mp4"},
        {Phase::failed("moov atom not found\nInvalid data"), clip, "moov atom not found\nInvalid data"},
        {Phase::failed(""), clip, ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.phase.message(row.source), row.message);
}

TEST(Phase, EqualsOnlyTheSameCaseWithTheSamePayload)
{
    const Phase phases[] = {Phase::empty(),         Phase::preparing(),   Phase::ready(),
                            Phase::exporting(),     Phase::complete("a"), Phase::complete("b"),
                            Phase::complete("./a"), Phase::complete(""),  Phase::failed("a"),
                            Phase::failed("x"),     Phase::failed("X"),   Phase::failed("x "),
                            Phase::failed("")};
    for (const Phase& left : phases)
        for (const Phase& right : phases)
            EXPECT_EQ(left == right, &left == &right) << left.message({}) << " and " << right.message({});
    EXPECT_EQ(Phase::complete("/out/a.mp4"), Phase::complete("/out/a.mp4"));
    EXPECT_EQ(Phase::failed("x"), Phase::failed("x"));
    EXPECT_EQ(Phase::empty(), Phase::empty());
}

TEST(Phase, CanBeEditedWhenReadyOrComplete)
{
    EXPECT_FALSE(Phase::empty().isEditable());
    EXPECT_FALSE(Phase::preparing().isEditable());
    EXPECT_TRUE(Phase::ready().isEditable());
    EXPECT_FALSE(Phase::exporting().isEditable());
    EXPECT_TRUE(Phase::complete("/out/a.mp4").isEditable());
    EXPECT_FALSE(Phase::failed("x").isEditable());
}

} // namespace stackreel
