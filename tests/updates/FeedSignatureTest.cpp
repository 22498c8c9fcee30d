#include "updates/FeedSignature.h"

#include "packaging/feed-tool/FeedSigningKey.h"
#include "updates/Base64.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>

namespace stackreel
{

namespace
{

const FeedSigningKey& signingKey()
{
    static const FeedSigningKey key = FeedSigningKey::generate();
    return key;
}

FeedKey publicKey()
{
    return FeedKey::fromBase64(signingKey().publicKey()).value();
}

} // namespace

TEST(FeedSignature, ReturnsTheSignedBytes)
{
    using namespace std::string_literals;
    for (const std::string& feed : {""s, "{}"s, "line\nline\n"s, "\0\xFF\r\n"s, std::string(262144, 'x')})
        EXPECT_EQ(verifiedFeed(signingKey().signedDocument(feed), publicKey()), feed);
}

TEST(FeedSignature, AcceptsATestVectorOfTheStandard)
{
    // RFC 8032, section 7.1, test 3.
    const std::string document =
        "YpHWV97sJAJIJ+acOr4BowzlSKKEdDpEXjaA19taw6wY/5tTjRbykK5n92CYTcZZSnwV6XFu0o3AJ77O6h7ECg==\n\xAF\x82";
    const auto key = FeedKey::fromBase64("/FHNjmIYoaONpH7QAjDwWAgW7RO6MwOsXeuRFUiQgCU=");
    ASSERT_TRUE(key);
    EXPECT_EQ(verifiedFeed(document, *key), "\xAF\x82");
}

RC_GTEST_PROP(FeedSignature, RejectsADocumentWithAnyBitFlipped, (const std::string& feed))
{
    std::string document = signingKey().signedDocument(feed);
    const auto bit = *rc::gen::inRange<std::size_t>(0, document.size() * 8);
    document[bit / 8] = static_cast<char>(document[bit / 8] ^ (1 << (bit % 8)));
    RC_ASSERT(!verifiedFeed(document, publicKey()));
}

TEST(FeedSignature, RejectsAShortDocumentWithAnySingleBitFlipped)
{
    const std::string document = signingKey().signedDocument(R"({"serial": 1})");
    for (std::size_t bit = 0; bit < document.size() * 8; ++bit) {
        std::string flipped = document;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
        EXPECT_FALSE(verifiedFeed(flipped, publicKey())) << bit;
    }
}

TEST(FeedSignature, RejectsATruncatedOrLengthenedDocument)
{
    const std::string document = signingKey().signedDocument("feed");
    for (std::size_t length = 0; length < document.size(); ++length)
        EXPECT_FALSE(verifiedFeed(document.substr(0, length), publicKey())) << length;
    for (const char extra : {'\0', '\n', ' ', 'x'}) {
        EXPECT_FALSE(verifiedFeed(document + extra, publicKey()));
        EXPECT_FALSE(verifiedFeed(extra + document, publicKey()));
    }
}

TEST(FeedSignature, RejectsAnotherKeyOrAnotherFeed)
{
    const FeedSigningKey other = FeedSigningKey::generate();
    EXPECT_FALSE(verifiedFeed(other.signedDocument("feed"), publicKey()));
    const std::string line = signingKey().signedDocument("one feed").substr(0, 89);
    EXPECT_FALSE(verifiedFeed(line + "another feed", publicKey()));
}

TEST(FeedSignature, RejectsWeakKeys)
{
    // With a public key that is a point of small order, some signatures would be valid for many texts.
    const std::string zeros(32, '\0');
    const std::string one = '\1' + std::string(31, '\0');
    for (const std::string& bytes : {zeros, one}) {
        FeedKey key;
        std::copy(bytes.begin(), bytes.end(), key.bytes.begin());
        const std::array<unsigned char, 64> signature{};
        EXPECT_FALSE(verifiedFeed(encodeBase64(signature) + "\nfeed", key));
        std::array<unsigned char, 64> identity{};
        identity[0] = 1;
        EXPECT_FALSE(verifiedFeed(encodeBase64(identity) + "\nfeed", key));
    }
}

TEST(FeedKey, IsTheBase64OfExactly32Bytes)
{
    const std::string good = signingKey().publicKey();
    ASSERT_EQ(good.size(), 44U);
    ASSERT_TRUE(FeedKey::fromBase64(good));
    const std::string bad[] = {"",
                               " ",
                               "REPLACE_BEFORE_RELEASE",
                               " " + good,
                               good + " ",
                               good + "\n",
                               good.substr(0, 43),
                               good.substr(0, 43) + "A",
                               good + good,
                               good.substr(0, 40),
                               "AAAA" + good,
                               std::string(43, '-') + "=",
                               std::string(44, '='),
                               good.substr(0, 20) + "\n" + good.substr(21),
                               std::string(44, '\0')};
    for (const std::string& text : bad)
        EXPECT_FALSE(FeedKey::fromBase64(text)) << text;
}

TEST(FeedKey, RejectsOtherEncodingsOfTheSameBytes)
{
    std::array<unsigned char, 32> bytes{};
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(200));
    std::string text = encodeBase64(bytes);
    ASSERT_EQ(FeedKey::fromBase64(text)->bytes, bytes);
    // The last character before the padding has two unused bits, which must be 0.
    for (int bits = 1; bits < 4; ++bits) {
        std::string other = text;
        other[42] = static_cast<char>(other[42] + bits);
        EXPECT_FALSE(FeedKey::fromBase64(other)) << other;
    }
}

TEST(FeedSigningKey, IsReadBackFromItsSecret)
{
    const auto again = FeedSigningKey::fromSecret(signingKey().secret());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->publicKey(), signingKey().publicKey());
    EXPECT_EQ(again->signedDocument("feed"), signingKey().signedDocument("feed"));
    EXPECT_NE(FeedSigningKey::generate().publicKey(), FeedSigningKey::generate().publicKey());
    EXPECT_FALSE(FeedSigningKey::fromSecret(""));
    EXPECT_FALSE(FeedSigningKey::fromSecret(signingKey().secret() + "\n"));
}

} // namespace stackreel
