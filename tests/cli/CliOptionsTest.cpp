#include "cli/CliOptions.h"

#include "system/Version.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

using Arguments = std::vector<std::string>;

ExportOptions exporting(const Arguments& arguments)
{
    const CliOptions options = parseOptions(arguments);
    if (const auto* error = std::get_if<UsageError>(&options))
        throw *error;
    return std::get<ExportOptions>(options);
}

TEST(CliOptions, ProbePrintsTextUnlessJsonIsGiven)
{
    const auto plain = std::get<ProbeOptions>(parseOptions({"probe", "a.mov"}));
    EXPECT_EQ(plain.source, "a.mov");
    EXPECT_FALSE(plain.json);
    EXPECT_TRUE(std::get<ProbeOptions>(parseOptions({"probe", "--json", "a.mov"})).json);
    EXPECT_TRUE(std::get<ProbeOptions>(parseOptions({"probe", "a.mov", "--json"})).json);
}

TEST(CliOptions, ExportHasTheDefaultsWithoutOptions)
{
    const ExportOptions options = exporting({"export", "a.mov"});
    EXPECT_EQ(options.source, "a.mov");
    EXPECT_FALSE(options.destination);
    EXPECT_EQ(options.choices, Recipe());
    EXPECT_FALSE(options.recipe || options.like || options.saveRecipe);
    EXPECT_FALSE(options.overwrite || options.dryRun || options.json || options.quiet);
}

TEST(CliOptions, ExportReadsEveryOption)
{
    const ExportOptions options = exporting({"export",     "--aspect",
                                             "Custom",     "--size=721x1281",
                                             "--top",      "0.1,0.2,0.3,0.4",
                                             "--bottom",   "0.5,0.25,0.25,0.5",
                                             "--from",     "1.5",
                                             "--to",       "2.75",
                                             "--no-audio", "--overwrite",
                                             "--dry-run",  "--json",
                                             "--quiet",    "--recipe",
                                             "r.json",     "--save-recipe",
                                             "s.json",     "a.mov",
                                             "b.mp4"});
    EXPECT_EQ(options.destination, "b.mp4");
    EXPECT_EQ(options.choices,
              (Recipe{.aspect = OutputAspect::custom,
                      .size = PixelSize{.width = 721, .height = 1281},
                      .top = CropRegion{.x = 0.1, .y = 0.2, .width = 0.3, .height = 0.4},
                      .bottom = CropRegion{.x = 0.5, .y = 0.25, .width = 0.25, .height = 0.5},
                      .from = 1.5,
                      .to = 2.75,
                      .sound = false}));
    EXPECT_EQ(options.choices.settings().size(), (PixelSize{.width = 720, .height = 1280}));
    EXPECT_EQ(options.recipe, "r.json");
    EXPECT_EQ(options.saveRecipe, "s.json");
    EXPECT_EQ(exporting({"export", "--like", "old.mp4", "a.mov"}).like, "old.mp4");
    EXPECT_TRUE(options.overwrite && options.dryRun && options.json && options.quiet);
}

TEST(CliOptions, SizeImpliesACustomAspect)
{
    EXPECT_EQ(exporting({"export", "--size", "640x640", "a"}).choices.settings().aspect,
              OutputAspect::custom);
    EXPECT_EQ(exporting({"export", "--aspect", "Custom", "a"}).choices.settings().size(),
              (PixelSize{.width = 1080, .height = 1920}));
}

TEST(CliOptions, AudioTrackImpliesSound)
{
    const Recipe choices = exporting({"export", "a", "--audio-track", "2"}).choices;
    EXPECT_EQ(choices.audioTrack, 2);
    EXPECT_EQ(choices.sound, true);
}

TEST(CliOptions, AspectAcceptsEachOfItsNames)
{
    for (const OutputAspect aspect : allOutputAspects)
        EXPECT_EQ(exporting({"export", "a", "--aspect", std::string(rawValue(aspect))}).choices.aspect,
                  aspect);
}

TEST(CliOptions, TheLastOfARepeatedOptionCounts)
{
    EXPECT_EQ(exporting({"export", "a", "--from", "1", "--from", "2"}).choices.from, 2);
}

TEST(CliOptions, RegionIsClampedToTheFrame)
{
    EXPECT_EQ(exporting({"export", "a", "--top", "-0.5,2,0.5,0.01"}).choices.top,
              (CropRegion{.x = 0, .y = 0.94, .width = 0.5, .height = 0.06}));
}

TEST(CliOptions, FilesMayHaveAnyName)
{
    const Arguments names = {"-x.mp4", "--json", "++", "--",      "probe",
                             "export", "a b",    "%s", "“é”.mp4", "\xff.mp4"};
    for (const std::string& name : names)
        EXPECT_EQ(exporting({"export", "--quiet", "--", name}).source, name);
    EXPECT_EQ(exporting({"export", "probe", "export"}).source, "probe");
    EXPECT_EQ(exporting({"export", "probe", "export"}).destination, "export");
    EXPECT_EQ(exporting({"export", "a", "++"}).destination, "./++");
    EXPECT_EQ(exporting({"export", "./-x.mp4"}).source, "./-x.mp4");
    EXPECT_EQ(exporting({"export", "--", "-a", "-b"}).destination, "-b");
}

ExportManyOptions exportingMany(const Arguments& arguments)
{
    const CliOptions options = parseOptions(arguments);
    if (const auto* error = std::get_if<UsageError>(&options))
        throw *error;
    return std::get<ExportManyOptions>(options);
}

TEST(CliOptions, IntoTakesAnyNumberOfSourcesWithTheSameOptions)
{
    using Paths = std::vector<std::filesystem::path>;
    const auto many = exportingMany(
        {"export", "a", "b", "--into", "out", "c", "--quiet", "probe", "--", "-d", "--json", "--"});
    EXPECT_EQ(many.sources, (Paths{"a", "b", "c", "probe", "-d", "--json", "--"}));
    EXPECT_EQ(many.into, "out");
    EXPECT_TRUE(many.each.quiet);
    EXPECT_FALSE(many.each.json);
    EXPECT_EQ(exportingMany({"export", "--into=out", "--", "a"}).sources, Paths{"a"});
}

TEST(CliOptions, HelpAndVersionAreInformation)
{
    for (const Arguments& arguments :
         {Arguments{"--help"}, {"-h"}, {"probe", "--help"}, {"export", "-h"}, {"export", "a", "b", "--help"}})
        EXPECT_NE(std::get<Information>(parseOptions(arguments)).text.find("Usage: stackreel-cli"),
                  std::string::npos);
    EXPECT_EQ(std::get<Information>(parseOptions({"--version"})).text,
              std::string("stackreel-cli ") + buildVersion() + "\n");
}

TEST(CliOptions, HelpOfACommandListsItsOptions)
{
    const std::string help = std::get<Information>(parseOptions({"export", "--help"})).text;
    for (const char* option : {"--aspect", "--size", "--top", "--bottom", "--from", "--to", "--no-audio",
                               "--recipe", "--like", "--save-recipe", "--overwrite", "--dry-run", "--json",
                               "--quiet", "--into", "SOURCE [DESTINATION]", "SOURCE... --into FOLDER"})
        EXPECT_NE(help.find(option), std::string::npos) << option;
}

struct WrongUsage {
    Arguments arguments;
    std::string message;
    std::string hint = "Try 'stackreel-cli export --help'.";
};

const std::string generalHint = "Try 'stackreel-cli --help'.";
const std::string probeHint = "Try 'stackreel-cli probe --help'.";

const std::vector<WrongUsage> wrongUsages = {
    {{}, "A command is missing: probe or export.", generalHint},
    {{""}, "There is no command “”.", generalHint},
    {{"--"}, "A command is missing: probe or export.", generalHint},
    {{"clip.mov"}, "There is no command “clip.mov”.", generalHint},
    {{"exprot", "a"}, "There is no command “exprot”. Did you mean export?", generalHint},
    {{"--hlep"}, "There is no option --hlep. Did you mean --help?", generalHint},
    {{"--quiet", "export", "a"}, "The option --quiet has to follow the command."},
    {{"probe"}, "The source video is missing.", probeHint},
    {{"probe", ""}, "The name of the source video is empty.", probeHint},
    {{"probe", "a", "b"}, "“b” is one file too many.", probeHint},
    {{"probe", "--jsn", "a"}, "There is no option --jsn. Did you mean --json?", probeHint},
    {{"probe", "--json=yes", "a"}, "The option --json takes no value.", probeHint},
    {{"export"}, "The source video is missing."},
    {{"export", "--"}, "The source video is missing."},
    {{"export", "a", ""}, "The name of the destination is empty."},
    {{"export", "a", "b", "c"}, "“c” is one file too many."},
    {{"export", "a", "--", "b", "c"}, "“c” is one file too many."},
    {{"clip.mov", "export", "a"}, "“clip.mov” is one file too many."},
    {{"export", "--into", "out"}, "The source video is missing."},
    {{"export", "a", "--into", ""}, "The name after --into is empty."},
    {{"export", "a", "", "--into", "out"}, "The name of a source video is empty."},
    {{"export", "a", "b", "--itno", "out"}, "There is no option --itno. Did you mean --into?"},
    {{"export", "a", "--into", "out", "--save-recipe", "r"},
     "The options --into and --save-recipe exclude each other."},
    {{"export", "-clip.mp4"}, "There is no option -clip.mp4. A file of that name is written ./-clip.mp4."},
    {{"export", "--overwite", "a"}, "There is no option --overwite. Did you mean --overwrite?"},
    {{"export", "--overwite=1", "a"}, "There is no option --overwite. Did you mean --overwrite?"},
    {{"export", "a", "--from"}, "The option --from needs a value."},
    {{"export", "a", "--no-audio", "--audio-track", "1"},
     "The options --no-audio and --audio-track exclude each other."},
    {{"export", "a", "--audio-track", "0"},
     "The value “0” of --audio-track is not the number of a sound track, such as 1 (stackreel-cli probe "
     "lists "
     "them)."},
    {{"export", "a", "--recipe", ""}, "The name after --recipe is empty."},
    {{"export", "a", "--like", "b", "--recipe", "c"}, "The options --recipe and --like exclude each other."},
    {{"export", "a", "--recip", "c"}, "There is no option --recip. Did you mean --recipe?"},
    {{"export", "a", "--from", "2", "--to", "2"}, "The end (--to) has to lie behind the start (--from)."},
    {{"export", "a", "--to", "0"}, "The end (--to) has to lie behind the start (--from)."},
    {{"export", "a", "--from", "-1"}, "The value “-1” of --from is not a time in seconds, such as 12.5."},
    {{"export", "a", "--to", "1,5"}, "The value “1,5” of --to is not a time in seconds, such as 12.5."},
    {{"export", "a", "--from", ""}, "The value “” of --from is not a time in seconds, such as 12.5."},
    {{"export", "a", "--aspect", "custom"},
     "The value “custom” of --aspect is not 9:16, 4:5, 1:1 or Custom."},
    {{"export", "a", "--size", "640"},
     "The value “640” of --size is not a size WxH with sides of 2 to 16384 pixels, such as 720x1280."},
    {{"export", "a", "--size", "4x4", "--aspect", "4:5"},
     "A size goes with --aspect Custom only, as 4:5 has a size of its own."},
    {{"export", "a", "--top", "0,0,1"},
     "The value “0,0,1” of --top is not a region X,Y,W,H in fractions of the frame, such as "
     "0.04,0.14,0.45,0.72."},
};

TEST(CliOptions, WrongUsageGivesAMessageAndAHint)
{
    for (const WrongUsage& usage : wrongUsages) {
        const CliOptions options = parseOptions(usage.arguments);
        const auto* error = std::get_if<UsageError>(&options);
        ASSERT_NE(error, nullptr) << usage.message;
        EXPECT_EQ(std::string(error->what()), usage.message);
        EXPECT_EQ(error->hint(), usage.hint) << usage.message;
    }
}

TEST(CliOptions, HandlesAnArgumentOfAMegabyte)
{
    const std::string long_ = "--" + std::string(1024 * 1024, 'x');
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseOptions({"export", long_})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parseOptions({"export", "a", "--from", long_})));
    EXPECT_TRUE(std::holds_alternative<ExportOptions>(parseOptions({"export", "--", long_})));
}

} // namespace

} // namespace stackreel
