#include "model/Recipe.h"

#include <nlohmann/json.hpp>

namespace stackreel
{

namespace
{

using Json = nlohmann::ordered_json;

Json regionObject(const CropRegion& region)
{
    return {{"x", region.x}, {"y", region.y}, {"width", region.width}, {"height", region.height}};
}

Json objectOf(const Recipe& recipe)
{
    Json object = {{"stackreelRecipe", recipeVersion}};
    if (recipe.size)
        object["size"] = {{"width", recipe.size->width}, {"height", recipe.size->height}};
    else if (recipe.aspect)
        object["aspect"] = rawValue(*recipe.aspect);
    if (recipe.top)
        object["top"] = regionObject(*recipe.top);
    if (recipe.bottom)
        object["bottom"] = regionObject(*recipe.bottom);
    if (recipe.from)
        object["from"] = *recipe.from;
    if (recipe.to)
        object["to"] = *recipe.to;
    if (recipe.sound)
        object["sound"] = *recipe.sound;
    if (recipe.audioTrack)
        object["audioTrack"] = *recipe.audioTrack;
    return object;
}

} // namespace

Recipe Recipe::of(const ExportRequest& request)
{
    Recipe recipe = {.aspect = request.settings.aspect,
                     .size = {},
                     .top = request.top,
                     .bottom = request.bottom,
                     .from = request.trimStart,
                     .to = {},
                     .sound = request.settings.includeAudio};
    if (recipe.aspect == OutputAspect::custom)
        recipe.size = request.settings.size();
    // The source's end is no choice: another source ends at another time.
    if (request.trimEnd != request.media.duration)
        recipe.to = request.trimEnd;
    if (request.audioTrack != 0)
        recipe.audioTrack = request.audioTrack + 1;
    return recipe;
}

Recipe Recipe::over(const Recipe& base) const
{
    const auto either = [](const auto& own, const auto& other) { return own ? own : other; };
    // An aspect other than `custom` has a size of its own.
    const bool takesSize = !aspect || aspect == OutputAspect::custom;
    return {.aspect = either(aspect, base.aspect),
            .size = takesSize ? either(size, base.size) : std::nullopt,
            .top = either(top, base.top),
            .bottom = either(bottom, base.bottom),
            .from = either(from, base.from),
            .to = either(to, base.to),
            .sound = either(sound, base.sound),
            .audioTrack = either(audioTrack, base.audioTrack)};
}

ExportSettings Recipe::settings() const
{
    ExportSettings settings;
    settings.aspect = aspect.value_or(settings.aspect);
    settings.includeAudio = sound.value_or(settings.includeAudio);
    if (size) {
        settings.customWidth = size->width;
        settings.customHeight = size->height;
    }
    return settings;
}

std::string Recipe::json() const
{
    return objectOf(*this).dump();
}

std::string Recipe::jsonLines() const
{
    return objectOf(*this).dump(2) + "\n";
}

} // namespace stackreel
