// Tests the tool with which a maintainer creates a key and signs a feed.

#include "tests/support/TemporaryDirectory.h"
#include "updates/UpdateFeed.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace stackreel
{

namespace
{

std::string feedOf(int serial)
{
    return R"({"serial": )" + std::to_string(serial) +
           R"(, "releases": [{"version": "0.2.0", "notes": "", "download": "https://example.org/"}]})";
}

const std::string feed = feedOf(3);

struct Result {
    int status;
    QString output;
    QString error;
};

Result run(const std::vector<std::string>& arguments)
{
    QStringList argumentList;
    for (const std::string& argument : arguments)
        argumentList.append(QString::fromStdString(argument));
    QProcess process;
    process.start(QStringLiteral(STACKREEL_FEED_TOOL), argumentList);
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

TEST_F(FeedTool, CreatesAPrivateKeyFileAndNeverReplacesOne)
{
    struct stat status = {};
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

TEST_F(FeedTool, ReplacesAFeedOnlyWithAHigherSerial)
{
    ASSERT_EQ(run({"sign", secret, folder.write("feed.json", feedOf(3)), document}).status, 0);
    for (const int serial : {1, 2, 3}) {
        const Result result = run({"sign", secret, folder.write("feed.json", feedOf(serial)), document});
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.error.contains(QStringLiteral("higher than 3"))) << result.error.toStdString();
        EXPECT_TRUE(contentOf(document).ends_with(feedOf(3)));
    }
    EXPECT_EQ(run({"sign", secret, folder.write("feed.json", feedOf(4)), document}).status, 0);
    EXPECT_TRUE(contentOf(document).ends_with(feedOf(4)));
}

TEST_F(FeedTool, ReplacesOnlyAFeedSignedWithItsKey)
{
    const std::string other = folder / "other key";
    run({"new-key", other});
    ASSERT_EQ(run({"sign", other, folder.write("feed.json", feedOf(3)), document}).status, 0);
    const std::string before = contentOf(document);
    EXPECT_EQ(run({"sign", secret, folder.write("feed.json", feedOf(4)), document}).status, 1);
    EXPECT_EQ(contentOf(document), before);
    folder.write("stackreel.feed", "something else");
    EXPECT_EQ(run({"sign", secret, folder / "feed.json", document}).status, 1);
    EXPECT_EQ(contentOf(document), "something else");
    EXPECT_EQ(folder.names().size(), 4U);
}

TEST_F(FeedTool, SignsUpTo256KiBIncludingTheSignature)
{
    constexpr std::size_t maxFeedSize = 262'144 - 89;
    const std::string largest = feed + std::string(maxFeedSize - feed.size(), ' ');
    EXPECT_EQ(run({"sign", secret, folder.write("feed.json", largest), document}).status, 0);
    EXPECT_EQ(contentOf(document).size(), 262'144U);
    std::filesystem::remove(document);
    const Result result = run({"sign", secret, folder.write("feed.json", largest + " "), document});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.error.contains(QStringLiteral("256 KiB"))) << result.error.toStdString();
    EXPECT_FALSE(std::filesystem::exists(document));
}

TEST_F(FeedTool, RejectsAFeedThatTheProgramWouldReject)
{
    for (const std::string& broken : {std::string("nonsense"), feed + "x"}) {
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
