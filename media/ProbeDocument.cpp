#include "media/ProbeDocument.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

using Json = nlohmann::json;

[[noreturn]] void fail(const std::string& path, const std::string& problem)
{
    throw DecodingError("The video details could not be read: " + path + " " + problem + ".");
}

std::string asString(const Json& value, const std::string& path)
{
    if (!value.is_string())
        fail(path, "is not a text");
    return value.get<std::string>();
}

std::int64_t asInteger(const Json& value, const std::string& path)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > std::uint64_t{INT64_MAX})
        fail(path, "is too large");
    if (value.is_number_integer())
        return value.get<std::int64_t>();
    if (!value.is_number_float())
        fail(path, "is not a whole number");
    const double number = value.get<double>();
    if (std::trunc(number) != number || number < -limit || number >= limit)
        fail(path, "is not a whole number");
    return static_cast<std::int64_t>(number);
}

const Json& asObject(const Json& value, const std::string& path)
{
    if (!value.is_object())
        fail(path, "is not an object");
    return value;
}

template <typename Decode>
auto asList(const Json& value, const std::string& path, Decode decode)
{
    if (!value.is_array())
        fail(path, "is not a list");
    std::vector<decltype(decode(value, path))> list;
    for (const Json& element : value)
        list.push_back(decode(element, path + "[" + std::to_string(list.size()) + "]"));
    return list;
}

std::map<std::string, std::string> asTexts(const Json& value, const std::string& path)
{
    std::map<std::string, std::string> texts;
    for (const auto& [key, text] : asObject(value, path).items())
        texts.emplace(key, asString(text, path + "." + key));
    return texts;
}

/// The decoded value of a key; `std::nullopt` when the key is absent or its value is null.
template <typename Decode>
auto optional(const Json& object, const std::string& path, const char* key, Decode decode)
{
    using Value = decltype(decode(object, path));
    const auto found = object.find(key);
    if (found == object.end() || found->is_null())
        return std::optional<Value>();
    return std::optional<Value>(decode(*found, path.empty() ? key : path + "." + key));
}

ProbeSideData decodeSideData(const Json& value, const std::string& path)
{
    asObject(value, path);
    return {.rotation = optional(value, path, "rotation", asInteger)};
}

std::optional<std::string> textDetail(const Json& object, const char* key)
{
    const auto found = object.find(key);
    const bool isText = found != object.end() && found->is_string();
    return isText ? std::optional(found->get<std::string>()) : std::nullopt;
}

std::optional<std::int64_t> numberDetail(const Json& object, const char* key)
{
    const auto found = object.find(key);
    const bool isNumber = found != object.end() && found->is_number_integer();
    return isNumber ? std::optional(found->get<std::int64_t>()) : std::nullopt;
}

ProbeStreamDetails decodeDetails(const Json& stream)
{
    return {
        .averageFrameRate = textDetail(stream, "avg_frame_rate"),
        .colourMatrix = textDetail(stream, "color_space"),
        .colourPrimaries = textDetail(stream, "color_primaries"),
        .colourTransfer = textDetail(stream, "color_transfer"),
        .colourRange = textDetail(stream, "color_range"),
        .channelLayout = textDetail(stream, "channel_layout"),
        .channels = numberDetail(stream, "channels"),
    };
}

ProbeStream decodeStream(const Json& value, const std::string& path)
{
    asObject(value, path);
    const auto asSideDataList = [](const Json& list, const std::string& where) {
        return asList(list, where, decodeSideData);
    };
    return {
        .codecType = optional(value, path, "codec_type", asString),
        .codecName = optional(value, path, "codec_name", asString),
        .width = optional(value, path, "width", asInteger),
        .height = optional(value, path, "height", asInteger),
        .duration = optional(value, path, "duration", asString),
        .frames = optional(value, path, "nb_frames", asString),
        .tags = optional(value, path, "tags", asTexts),
        .sideDataList = optional(value, path, "side_data_list", asSideDataList),
        .details = decodeDetails(value),
    };
}

ProbeFormat decodeFormat(const Json& value, const std::string& path)
{
    asObject(value, path);
    const auto tags = value.find("tags");
    return {.duration = optional(value, path, "duration", asString),
            .comment = tags == value.end() ? std::nullopt : textDetail(*tags, "comment")};
}

Json parse(std::string_view json)
{
    // The parser treats a NUL byte as the end of the text and ignores what follows.
    const bool hasNul = json.find('\0') != std::string_view::npos;
    Json root = hasNul ? Json(Json::value_t::discarded) : Json::parse(json, nullptr, false);
    if (root.is_discarded())
        throw DecodingError("The video details could not be read: the report is not valid JSON.");
    return root;
}

} // namespace

const ProbeStream* ProbeDocument::firstStream(std::string_view codecType) const
{
    const auto found = std::find_if(streams.begin(), streams.end(),
                                    [&](const ProbeStream& stream) { return stream.codecType == codecType; });
    return found == streams.end() ? nullptr : &*found;
}

ProbeDocument ProbeDocument::decode(std::string_view json)
{
    const Json root = parse(json);
    asObject(root, "the report");
    if (!root.contains("streams"))
        fail("“streams”", "is missing");
    return {
        .streams = asList(root["streams"], "streams", decodeStream),
        .format = optional(root, "", "format", decodeFormat),
    };
}

} // namespace stackreel
