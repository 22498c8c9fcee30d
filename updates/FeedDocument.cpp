#include "updates/FeedDocument.h"

#include "updates/UpdateError.h"

#include <nlohmann/json.hpp>

#include <set>
#include <string>
#include <vector>

namespace stackreel
{

namespace
{

using Json = nlohmann::json;

/// A parser callback that throws at the first duplicate key, and when the nesting is too deep.
class DocumentGuard
{
public:
    bool operator()(int depth, Json::parse_event_t event, const Json& value)
    {
        // The levels are the feed, its list of releases, a release, and one that later feeds may add.
        constexpr int maxDepth = 4;
        const bool opens =
            event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
        if (opens && depth >= maxDepth)
            throw FeedFormatError("the document is nested too deeply");
        if (event == Json::parse_event_t::object_start)
            m_keys.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            m_keys.pop_back();
        else if (event == Json::parse_event_t::key && !m_keys.back().insert(value.get<std::string>()).second)
            throw FeedFormatError("the key “" + value.get<std::string>() + "” is given twice");
        return true;
    }

private:
    std::vector<std::set<std::string>> m_keys; ///< of each object that is still open, outermost first
};

} // namespace

nlohmann::json parseFeedDocument(std::string_view json)
{
    // The parser treats a NUL byte as the end of the text and ignores what follows.
    if (json.find('\0') != std::string_view::npos)
        throw FeedFormatError("the document has a NUL in it");
    DocumentGuard guard;
    try {
        return Json::parse(json, [&guard](int depth, Json::parse_event_t event, Json& value) {
            return guard(depth, event, value);
        });
    } catch (const Json::exception& error) {
        throw FeedFormatError(error.what());
    }
}

} // namespace stackreel
