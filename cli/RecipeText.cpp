#include "cli/RecipeText.h"

#include "cli/CliError.h"
#include "cli/OptionText.h"
#include "cli/RecipeObject.h"

#include <nlohmann/json.hpp>

#include <limits>

namespace stackreel
{

namespace
{

using Json = nlohmann::json;

constexpr const char* versionKey = "stackreelRecipe";

std::optional<CropRegion> regionIn(const RecipeObject& reader, const char* key)
{
    const auto region = reader.object(key, "a region with x, y, width and height");
    if (!region)
        return std::nullopt;
    region->requireKnown({"x", "y", "width", "height"});
    const auto fraction = [&](const char* name) {
        return region->number(name, "a fraction of the frame, such as 0.45");
    };
    const CropRegion read = {
        .x = fraction("x"), .y = fraction("y"), .width = fraction("width"), .height = fraction("height")};
    return read.clampedToFrame();
}

std::optional<PixelSize> sizeIn(const RecipeObject& reader)
{
    const auto size = reader.object("size", "a size with width and height");
    if (!size)
        return std::nullopt;
    size->requireKnown({"width", "height"});
    const auto side = [&](const char* name) {
        return size->wholeNumber(name, "a number of pixels from 2 to 16384", OptionText::smallestSide,
                                 OptionText::largestSide);
    };
    return PixelSize{.width = side("width"), .height = side("height")};
}

std::optional<OutputAspect> aspectIn(const RecipeObject& reader)
{
    const Json* value = reader.find("aspect");
    if (value == nullptr)
        return std::nullopt;
    const auto aspect = value->is_string() ? outputAspect(value->get<std::string>()) : std::nullopt;
    if (!aspect)
        reader.fail("aspect", "9:16, 4:5, 1:1 or Custom");
    return aspect;
}

std::optional<double> timeIn(const RecipeObject& reader, const char* key)
{
    constexpr const char* expected = "a time in seconds, such as 12.5";
    if (reader.find(key) == nullptr)
        return std::nullopt;
    const double seconds = reader.number(key, expected);
    if (seconds < 0 || seconds > OptionText::latestTime)
        reader.fail(key, expected);
    return seconds + 0.0; // changes -0.0 to 0.0
}

std::optional<bool> soundIn(const RecipeObject& reader)
{
    const Json* value = reader.find("sound");
    if (value != nullptr && !value->is_boolean())
        reader.fail("sound", "true or false");
    return value == nullptr ? std::nullopt : std::optional(value->get<bool>());
}

std::optional<std::int64_t> trackIn(const RecipeObject& reader)
{
    if (reader.find("audioTrack") == nullptr)
        return std::nullopt;
    return reader.wholeNumber("audioTrack", "the number of a sound track from 1", 1, OptionText::lastTrack);
}

void requireVersion(const RecipeObject& reader, const std::string& name)
{
    const std::int64_t version =
        reader.wholeNumber(versionKey, "a version from 1", 1, std::numeric_limits<std::int32_t>::max());
    if (version > recipeVersion)
        throw CliError("The recipe “" + name + "” has version " + std::to_string(version) +
                       ", and this program knows recipes up to version " + std::to_string(recipeVersion) +
                       ". Use a newer Stackreel.");
}

Recipe recipeIn(const RecipeObject& reader)
{
    reader.requireKnown({versionKey, "aspect", "size", "top", "bottom", "from", "to", "sound", "audioTrack"});
    Recipe recipe = {.aspect = aspectIn(reader),
                     .size = sizeIn(reader),
                     .top = regionIn(reader, "top"),
                     .bottom = regionIn(reader, "bottom"),
                     .from = timeIn(reader, "from"),
                     .to = timeIn(reader, "to"),
                     .sound = soundIn(reader),
                     .audioTrack = trackIn(reader)};
    if (recipe.size && recipe.aspect.value_or(OutputAspect::custom) != OutputAspect::custom)
        reader.fail("size", "possible beside an aspect, which has a size of its own");
    if (recipe.size)
        recipe.aspect = OutputAspect::custom;
    if (recipe.to && *recipe.to <= recipe.from.value_or(0))
        reader.fail("to", "behind “from”");
    return recipe;
}

Json parsed(std::string_view json)
{
    // The parser would ignore what follows a NUL.
    const bool hasNul = json.find('\0') != std::string_view::npos;
    return hasNul ? Json(Json::value_t::discarded) : Json::parse(json, nullptr, false);
}

} // namespace

bool RecipeText::isRecipe(std::string_view json)
{
    const Json root = parsed(json);
    return root.is_object() && root.contains(versionKey);
}

Recipe RecipeText::parse(std::string_view json, const std::string& name)
{
    const Json root = parsed(json);
    if (root.is_discarded())
        throw CliError("The recipe “" + name + "” is not valid JSON.");
    if (!root.is_object() || !root.contains(versionKey))
        throw CliError("“" + name + "” is not a recipe: “" + versionKey + "” is missing.");
    const RecipeObject reader(root, "", name);
    requireVersion(reader, name);
    return recipeIn(reader);
}

} // namespace stackreel
