// Parses any bytes as a recipe. The result has to be usable and to be read back from its own text, or the
// error has to be one for the user.

#include "cli/CliError.h"
#include "cli/RecipeText.h"
#include "tests/fuzz/Require.h"

using namespace stackreel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    try {
        const Recipe recipe = RecipeText::parse(text, "fuzzed.json");
        require(RecipeText::isRecipe(text), "a text that is parsed is a recipe");
        require(!recipe.top || recipe.top->clampedToFrame() == *recipe.top, "a crop lies in the frame");
        require(!recipe.to || *recipe.to > recipe.from.value_or(0), "a range ends after its start");
        require(RecipeText::parse(recipe.json(), "written") == recipe, "a written recipe is read back");
    } catch (const CliError&) {
        // The user's text.
    }
    return 0;
}
