#pragma once

#include "model/Recipe.h"

#include <string>
#include <string_view>

namespace stackreel
{

/// Reads recipes (docs/recipe.schema.json). Pure.
struct RecipeText {
    /// Parses a recipe. `name` is the file that it was found in, for messages. Crops are fitted into the
    /// frame, as those of options are.
    ///
    /// Throws `CliError` when the text is not JSON, is not a recipe or one of a newer version, has a key that
    /// is unknown, or a value that is wrong.
    static Recipe parse(std::string_view json, const std::string& name);
    /// Whether the text is a JSON object that claims to be a recipe, of whatever version.
    static bool isRecipe(std::string_view json);
};

} // namespace stackreel
