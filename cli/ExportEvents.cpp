#include "cli/ExportEvents.h"

#include "cli/CliError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>

namespace stackreel
{

namespace
{

using Json = nlohmann::ordered_json;

// The front says which encoder it chose. Without the front, FFmpeg has the one that was requested.
constexpr const char* requestedEncoder = "h264_videotoolbox";

Json event(const char* name, const std::filesystem::path& source)
{
    return {{"event", name}, {"source", source.string()}};
}

std::string line(const Json& object)
{
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

template <typename Value>
Json nullable(const std::optional<Value>& value)
{
    return value ? Json(*value) : Json(nullptr);
}

Json listOf(const std::vector<FrontChange>& changes)
{
    Json list = Json::array();
    for (const FrontChange& change : changes)
        list.push_back({{"name", change.name}, {"value", change.value}, {"reason", change.reason}});
    return list;
}

std::string encoderIn(const std::vector<FrontChange>& changes)
{
    const auto chosen = std::find_if(changes.begin(), changes.end(),
                                     [](const FrontChange& change) { return change.name == "encoder"; });
    return chosen == changes.end() ? requestedEncoder : chosen->value;
}

Json linesOf(const std::string& text)
{
    Json lines = Json::array();
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part);)
        lines.push_back(part);
    return lines;
}

} // namespace

std::string ExportEvents::started(const ExportFacts& facts)
{
    Json object = event("started", facts.source);
    object["file"] = facts.file.string();
    object["width"] = facts.size.width;
    object["height"] = facts.size.height;
    object["seconds"] = facts.seconds;
    try {
        return object.dump() + "\n";
    } catch (const Json::exception&) {
        throw CliError("A file name is not UTF-8, which JSON cannot carry. Leave --json out.");
    }
}

std::string ExportEvents::progress(const std::filesystem::path& source, const Progress& progress)
{
    Json object = event("progress", source);
    object["percent"] = progress.percent;
    object["speed"] = nullable(progress.speed);
    object["secondsLeft"] = nullable(progress.secondsLeft);
    return line(object);
}

std::string ExportEvents::finished(const ExportFacts& facts, const ExportResult& result)
{
    Json object = event("finished", facts.source);
    object["file"] = facts.file.string();
    object["bytes"] = nullable(result.bytes);
    object["width"] = facts.size.width;
    object["height"] = facts.size.height;
    object["seconds"] = result.seconds;
    object["elapsedSeconds"] = result.elapsedSeconds;
    object["encoder"] = encoderIn(result.changes);
    object["changes"] = listOf(result.changes);
    return line(object);
}

std::string ExportEvents::failed(const std::optional<std::filesystem::path>& source, const Failure& failure)
{
    Json object = {{"event", "failed"}, {"source", source ? Json(source->string()) : Json(nullptr)}};
    object["code"] = failure.code;
    object["message"] = failure.sentence;
    object["toolLines"] = linesOf(failure.toolLines);
    return line(object);
}

std::string ExportEvents::summary(const ExportTally& tally)
{
    return line({{"event", "summary"},
                 {"saved", tally.saved},
                 {"failed", tally.failed},
                 {"notStarted", tally.notStarted}});
}

} // namespace stackreel
