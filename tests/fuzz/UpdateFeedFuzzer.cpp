// Any bytes as an update feed, and as a signed document: refused with a description, or a feed that keeps its
// promises.

#include "platform/updates/UpdateError.h"
#include "platform/updates/UpdateFeed.h"
#include "tests/fuzz/Require.h"

#include <algorithm>

using namespace stackreel;

namespace
{

void check(const UpdateFeed& feed)
{
    require(feed.serial > 0, "a serial is positive");
    require(!feed.releases.empty() && feed.releases.size() <= 100, "there are 1 to 100 releases");
    for (const UpdateRelease& release : feed.releases) {
        require(UpdateVersion::parse(release.versionText) == release.version, "a version has its text");
        require(release.version <= feed.newest().version, "none is newer than the newest");
        require(release.notes.find('\0') == std::string::npos, "notes have no NUL");
        require(release.notes.find('\x1B') == std::string::npos, "notes have no escape character");
        require(std::tolower(release.downloadPage[0]) == 'h' && release.downloadPage[5] == ':',
                "a download page is an https address");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    try {
        check(UpdateFeed::decode(text));
    } catch (const FeedFormatError& error) {
        require(error.what()[0] != '\0', "an error has a description");
    }
    FeedKey key;
    key.bytes.fill(7);
    require(!verifiedFeed(text, key), "nobody signs by chance");
    return 0;
}
