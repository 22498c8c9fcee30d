// The maintainer's way from a new key to a published feed, by the tool that the scripts run.

#include "platform/updates/UpdateFeed.h"
#include "tests/support/TemporaryDirectory.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace stackreel
{

namespace
{

constexpr const char* feed =
    R"({"serial": 3, "releases": [{"version": "0.2.0", "notes": "", "download": "https://example.org/"}]})";

struct Result {
    int status;
    QString output;
    QString error;
};

Result run(const std::vector<std::string>& arguments)
{
    QStringList words;
    for (const std::string& argument : arguments)
        words.append(QString::fromStdString(argument));
    QProcess process;
    process.start(QStringLiteral(STACKREEL_FEED_TOOL), words);
    process.waitForFinished(60'000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

class FeedTool : public testing::Test
{
protected:
    FeedTool() : publicKey(run({"new-key", secret}).output.trimmed().toStdString()) {}

    TemporaryDirectory folder;
    std::string secret = folder / "secret key";
    std::string document = folder / "stackreel.feed";
    std::string publicKey;
};

} // namespace

TEST_F(FeedTool, MakesAKeyThatOnlyItsOwnerReadsAndNeverReplacesOne)
{
    struct stat status {
    };
    ASSERT_EQ(::stat(secret.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    EXPECT_TRUE(FeedKey::fromBase64(publicKey));
    const std::string before = contentOf(secret);
    EXPECT_EQ(run({"new-key", secret}).status, 1);
    EXPECT_EQ(contentOf(secret), before);
    EXPECT_EQ(before.find(publicKey), std::string::npos);
}

TEST_F(FeedTool, SignsAFeedThatTheProgramAccepts)
{
    const Result signing = run({"sign", secret, folder.write("feed.json", feed), document});
    EXPECT_EQ(signing.status, 0) << signing.error.toStdString();
    EXPECT_EQ(signing.output, QStringLiteral("serial 3, newest version 0.2.0\n"));
    const std::string signedFeed = contentOf(document);
    EXPECT_TRUE(signedFeed.ends_with(feed));
    EXPECT_EQ(acceptedFeed(signedFeed, FeedKey::fromBase64(publicKey).value(), 0).serial, 3);
    EXPECT_EQ(run({"check", publicKey, document}).output, signing.output);
}

TEST_F(FeedTool, ReplacesAnOlderDocument)
{
    folder.write("stackreel.feed", "older");
    EXPECT_EQ(run({"sign", secret, folder.write("feed.json", feed), document}).status, 0);
    EXPECT_TRUE(contentOf(document).ends_with(feed));
}

TEST_F(FeedTool, RefusesWhatNoProgramWouldAccept)
{
    const std::string large =
        std::string(R"({"serial": 3, "x": ")") + std::string(262'144, 'x') + R"(", )" + (feed + 14);
    for (const std::string& broken : {std::string("nonsense"), std::string(feed) + "x", large}) {
        EXPECT_EQ(run({"sign", secret, folder.write("feed.json", broken), document}).status, 1);
        EXPECT_TRUE(contentOf(document).empty());
    }
    EXPECT_EQ(run({"sign", folder / "absent", folder.write("feed.json", feed), document}).status, 1);
    EXPECT_EQ(run({"sign", folder.write("no key", "key"), folder / "feed.json", document}).status, 1);
    EXPECT_EQ(run({"check", publicKey, folder.write("forged", feed)}).status, 1);
    EXPECT_EQ(run({"check", "key", document}).status, 1);
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({"sign", secret}).status, 2);
}

} // namespace stackreel
