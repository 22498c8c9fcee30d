// Generates the key with which update feeds are signed, and signs and checks feeds. See docs/releasing.md.

#include "packaging/feed-tool/FeedSigningKey.h"
#include "updates/UpdateError.h"
#include "updates/UpdateFeed.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace
{

using namespace stackreel;
using Path = std::filesystem::path;

constexpr const char* usage = "usage: stackreel-feed new-key SECRET-KEY-FILE\n"
                              "       stackreel-feed sign SECRET-KEY-FILE FEED.json DOCUMENT\n"
                              "       stackreel-feed check PUBLIC-KEY DOCUMENT\n";

std::string contentOf(const Path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(stream), {});
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    return content;
}

/// Creates a file with this content. Throws when the file exists or cannot be written.
void writeNew(const Path& file, const std::string& content, mode_t mode)
{
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0)
        throw std::runtime_error("cannot create " + file.string() + ", or it is there already");
    const bool isWritten =
        ::write(descriptor, content.data(), content.size()) == static_cast<ssize_t>(content.size());
    const bool isClosed = ::close(descriptor) == 0;
    if (!isWritten || !isClosed) {
        ::unlink(file.c_str());
        throw std::runtime_error("cannot write " + file.string());
    }
}

void makeKey(const Path& file)
{
    const FeedSigningKey key = FeedSigningKey::generate();
    writeNew(file, key.secret() + "\n", 0600);
    std::cout << key.publicKey() << "\n";
}

FeedSigningKey readKey(const Path& file)
{
    std::string text = contentOf(file);
    if (text.ends_with('\n'))
        text.pop_back();
    const auto key = FeedSigningKey::fromSecret(text);
    if (!key)
        throw std::runtime_error(file.string() + " holds no secret key");
    return *key;
}

void describe(const UpdateFeed& feed)
{
    std::cout << "serial " << feed.serial << ", newest version " << feed.newest().versionText << "\n";
}

/// Throws unless the published document is signed with the same key and has a lower serial than the next
/// feed. Programs do not accept a feed with a lower serial than one that they have seen.
void requireHigherSerial(const Path& document, const UpdateFeed& next, const FeedSigningKey& key)
{
    if (!std::filesystem::exists(document))
        return;
    UpdateFeed published;
    try {
        published = acceptedFeed(contentOf(document), FeedKey::fromBase64(key.publicKey()).value(), 0);
    } catch (const UpdateError&) {
        throw std::runtime_error(document.string() + " is there, and no feed that was signed with this key");
    }
    if (next.serial <= published.serial)
        throw std::runtime_error("the serial has to be higher than " + std::to_string(published.serial) +
                                 ", which the feed before has");
}

void sign(const Path& keyFile, const Path& feedFile, const Path& document)
{
    constexpr std::size_t maxBytes = 256 * 1024;
    const FeedSigningKey key = readKey(keyFile);
    const std::string feed = contentOf(feedFile);
    // Decode the feed first: a feed that no program would accept must not be signed.
    const UpdateFeed decoded = UpdateFeed::decode(feed);
    requireHigherSerial(document, decoded, key);
    const std::string content = key.signedDocument(feed);
    if (content.size() > maxBytes)
        throw std::runtime_error("the feed is larger than 256 KiB");
    const Path written = document.string() + ".new";
    writeNew(written, content, 0644);
    std::filesystem::rename(written, document);
    describe(decoded);
}

void check(const std::string& publicKey, const Path& document)
{
    const auto key = FeedKey::fromBase64(publicKey);
    if (!key)
        throw std::runtime_error("the public key is not the base64 of 32 bytes");
    describe(acceptedFeed(contentOf(document), *key, 0));
}

} // namespace

int main(int count, char** words)
{
    const std::vector<std::string> arguments(words + (count > 0 ? 1 : 0), words + count);
    try {
        if (arguments.size() == 2 && arguments[0] == "new-key")
            makeKey(arguments[1]);
        else if (arguments.size() == 4 && arguments[0] == "sign")
            sign(arguments[1], arguments[2], arguments[3]);
        else if (arguments.size() == 3 && arguments[0] == "check")
            check(arguments[1], arguments[2]);
        else {
            std::cerr << usage;
            return 2;
        }
    } catch (const std::exception& error) {
        std::cerr << "stackreel-feed: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
