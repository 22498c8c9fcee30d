#include "tests/cli/CliInstallation.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

const Words unusualChoices = {"--aspect",  "4:5",    "--top", "0.1,0.123456789,0.333333,0.4",
                              "--from",    "0.1234", "--to",  "7.7",
                              "--no-audio"};

class RecipeExport : public testing::Test
{
protected:
    CliResult run(Words arguments, const Words& more = {}) const
    {
        arguments.insert(arguments.begin(), {"export", "clip.mov"});
        arguments.insert(arguments.end(), more.begin(), more.end());
        return m_cli.run(arguments);
    }
    /// The printed arguments of `ffmpeg`.
    std::string dryRun(const Words& arguments) const { return run(arguments, {"--dry-run"}).output; }
    /// Makes the fake ffprobe report this comment on `old.mp4`.
    void setComment(const nlohmann::json& comment) const
    {
        auto report = nlohmann::json::parse(verticalReport);
        report["format"]["tags"]["comment"] = comment;
        m_cli.write("old.mp4", "an export");
        m_cli.setTool("ffprobe", "case \"$last\" in */old.mp4) cat <<'END'\n" + report.dump() +
                                     "\nEND\n;; */.stackreel-*) cat \"$tools/export.json\" ;; "
                                     "*) cat \"$tools/source.json\" ;; esac");
    }
    std::string quoted(const fs::path& name) const { return "“" + (m_cli.folder() / name).string() + "”"; }

    CliInstallation m_cli;
};

TEST_F(RecipeExport, SavesChoicesFromWhichADryRunIsTheSame)
{
    ASSERT_EQ(run(unusualChoices, {"--dry-run", "--save-recipe", "look.json"}).status, 0);
    const std::string expected = dryRun(unusualChoices);
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(dryRun({"--recipe", "look.json"}), expected);
    EXPECT_NE(dryRun({}), expected);
}

TEST_F(RecipeExport, SavesTheDefaultsToo)
{
    ASSERT_EQ(run({"--dry-run", "--save-recipe", "look.json"}).status, 0);
    EXPECT_EQ(m_cli.names(), (Words{"clip.mov", "look.json"}));
    EXPECT_EQ(dryRun({"--recipe", "look.json"}), dryRun({}));
    const auto recipe = nlohmann::json::parse(m_cli.content("look.json"));
    EXPECT_EQ(recipe.at("aspect"), "9:16");
    EXPECT_EQ(recipe.at("top").at("x"), 0.04);
    EXPECT_FALSE(recipe.contains("to"));
}

TEST_F(RecipeExport, OptionsWinOverTheRecipe)
{
    run(unusualChoices, {"--dry-run", "--save-recipe", "look.json"});
    Words expected = unusualChoices;
    expected[5] = "1.5";
    EXPECT_EQ(dryRun({"--from", "1.5", "--recipe", "look.json"}), dryRun(expected));
    const CliResult empty = run({"--from", "8", "--recipe", "look.json"});
    EXPECT_EQ(empty.status, 2);
    EXPECT_EQ(empty.error, "The end (--to) has to lie behind the start (--from).\n"
                           "Try 'stackreel-cli export --help'.\n");
}

TEST_F(RecipeExport, ShowsNoControlCharactersOfARecipe)
{
    m_cli.write("wrong.json", R"({"stackreelRecipe": 1, "\u001b]0;x\u0007": 3})");
    EXPECT_EQ(run({"--recipe", "wrong.json"}).error,
              "The recipe " + quoted("wrong.json") + " has the unknown key “?]0;x?”.\n");
}

TEST_F(RecipeExport, HandsTheRecipeToTheEncoder)
{
    m_cli.setTool("ffmpeg", "printf %s \"$STACKREEL_RECIPE\" >\"$last\"");
    ASSERT_EQ(run({"--top", "0.1,0.123456789,0.333333,0.4", "out.mp4", "--save-recipe", "look.json"}).status,
              0);
    EXPECT_EQ(m_cli.names(), (Words{"clip.mov", "look.json", "out.mp4"}));
    EXPECT_EQ(nlohmann::json::parse(m_cli.content("out.mp4")),
              nlohmann::json::parse(m_cli.content("look.json")));
}

TEST_F(RecipeExport, RepeatsAnExportFromItsComment)
{
    run(unusualChoices, {"--dry-run", "--save-recipe", "look.json"});
    setComment(m_cli.content("look.json"));
    EXPECT_EQ(dryRun({"--like", "old.mp4"}), dryRun(unusualChoices));
    setComment(R"({"stackreelRecipe": 2})");
    EXPECT_EQ(run({"--like", "old.mp4"}).error,
              "The recipe " + quoted("old.mp4") +
                  " has version 2, and this program knows recipes up to version 1. Use a newer Stackreel.\n");
    for (const nlohmann::json& comment : {nlohmann::json("A holiday."), nlohmann::json(nullptr)}) {
        setComment(comment);
        EXPECT_EQ(run({"--like", "old.mp4"}).error,
                  quoted("old.mp4") + " has no recipe. Only videos that Stackreel has exported have one, and "
                                      "not those of its first versions.\n");
    }
}

TEST_F(RecipeExport, RefusesRecipesThatAreNoFiles)
{
    EXPECT_EQ(run({"--recipe", "none.json"}).error, quoted("none.json") + " does not exist.\n");
    EXPECT_EQ(run({"--like", "none.mp4"}).error, quoted("none.mp4") + " does not exist.\n");
    EXPECT_EQ(run({"--recipe", "/dev/zero"}).error, "“/dev/zero” is not a file.\n");
    EXPECT_EQ(run({"--recipe", "."}).status, 1);
    m_cli.write("large.json", std::string(2 * 1024 * 1024, ' '));
    EXPECT_EQ(run({"--recipe", "large.json"}).error,
              quoted("large.json") + " is too large to be a recipe.\n");
    m_cli.write("wrong.json", R"({"stackreelRecipe": 1, "fromm": 2})");
    EXPECT_EQ(run({"--recipe", "wrong.json"}).error,
              "The recipe " + quoted("wrong.json") + " has the unknown key “fromm”. Did you mean “from”?\n");
    EXPECT_EQ(m_cli.names(), (Words{"clip.mov", "large.json", "wrong.json"}));
}

TEST_F(RecipeExport, NeverSavesARecipeOverTheSourceOrTheVideoOrAnotherFile)
{
    m_cli.write("look.json", "old");
    EXPECT_EQ(run({"--save-recipe", "look.json"}).error,
              quoted("look.json") + " already exists. Replace it with --overwrite.\n");
    EXPECT_EQ(run({"--save-recipe", "clip.mov", "--overwrite"}).error,
              quoted("clip.mov") + " is the source itself, which is never overwritten.\n");
    EXPECT_EQ(run({"out.mp4", "--save-recipe", "out.mp4"}).error,
              quoted("out.mp4") + " cannot hold both the video and the recipe.\n");
    std::filesystem::create_directory_symlink(".", m_cli.folder() / "here");
    EXPECT_EQ(run({"out.mp4", "--save-recipe", "here/out.mp4"}).error,
              quoted("here/out.mp4") + " cannot hold both the video and the recipe.\n");
    EXPECT_EQ(m_cli.content("look.json"), "old");
    EXPECT_EQ(m_cli.names(), (Words{"clip.mov", "here", "look.json"}));
    EXPECT_EQ(run({"--dry-run", "--save-recipe", "look.json", "--overwrite"}).status, 0);
    EXPECT_NE(m_cli.content("look.json"), "old");
}

} // namespace

} // namespace stackreel
