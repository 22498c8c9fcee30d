#include "cli/EncoderStatus.h"
#include "cli/FactsText.h"
#include "cli/OptionText.h"
#include "tests/cli/CliInstallation.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/ScopedLocale.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

constexpr const char* status = "frame=  115 fps= 44 q=24.0 size=    2816kB time=00:00:01.92 "
                               "bitrate=12015.1kbits/s speed=0.735x";

/// Calls all functions of the command line that parse or print numbers, and returns their results as one
/// text.
std::string parsedAndPrintedNumbers()
{
    const MediaInfo media = {.width = 1920,
                             .height = 1080,
                             .rotation = 0,
                             .duration = 6'000'000.25,
                             .videoCodec = "h264",
                             .audioCodec = std::nullopt};
    const SourceDetails details = {.frameRate = 29.97, .colour = {}, .audioTracks = {}};
    std::string text = FactsText::json(media, details) + FactsText::lines(media, details);
    text += OptionText::seconds("1.5") == 1.5 ? "1.5 is a time\n" : "";
    text += OptionText::seconds("1,5") ? "1,5 is a time\n" : "";
    text += OptionText::region("0.25,0.25,0.5,0.5") ? "regions have commas between numbers\n" : "";
    text += EncoderStatus::parse(status)->speed == 0.735 ? "0.735x is a speed\n" : "";
    return text;
}

std::string printedBy(const CliInstallation& installation)
{
    return installation.run({"probe", "clip.mov", "--json"}).output +
           installation.run({"export", "clip.mov", "--dry-run", "--from", "1.25", "--top", "0.1,0.1,0.5,0.5"})
               .output +
           installation.run({"export", "clip.mov", "--from", "99.5"}).error;
}

TEST(CommaLocale, ChangesNoNumberThatIsReadOrWritten)
{
    const CliInstallation installation;
    const std::string before = parsedAndPrintedNumbers();
    const std::string printedBefore = printedBy(installation);
    EXPECT_NE(printedBefore.find("\n1.250\n"), std::string::npos) << printedBefore;

    const ScopedCommaLocale locale;
    const ScopedEnvironment all("LC_ALL", "de_DE.UTF-8");
    EXPECT_EQ(parsedAndPrintedNumbers(), before);
    EXPECT_EQ(printedBy(installation), printedBefore);
}

TEST(CommaLocale, TimeZoneChangesNoOutput)
{
    const CliInstallation installation;
    const std::string before = printedBy(installation);
    const ScopedEnvironment zone("TZ", "Asia/Kathmandu");
    EXPECT_EQ(printedBy(installation), before);
}

} // namespace

} // namespace stackreel
