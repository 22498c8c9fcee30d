#include "cli/RecipeFile.h"

#include "cli/AbsolutePath.h"
#include "cli/CliError.h"
#include "cli/RecipeText.h"
#include "media/MediaProbe.h"
#include "model/PartialFile.h"
#include "system/Files.h"
#include "system/SystemError.h"

#include <cerrno>
#include <fstream>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;

// A recipe has a few hundred bytes.
constexpr std::uintmax_t largestRecipe = 1024 * 1024;

/// Pipes and devices are refused: they may never end.
void requireRegularFile(const fs::path& file)
{
    std::error_code error;
    const fs::file_status found = fs::status(file, error);
    if (found.type() == fs::file_type::not_found)
        throw CliError("“" + file.string() + "” does not exist.");
    if (found.type() != fs::file_type::none && found.type() != fs::file_type::regular)
        throw CliError("“" + file.string() + "” is not a file.");
}

Recipe loadFile(const fs::path& file)
{
    requireRegularFile(file);
    std::error_code error;
    if (fs::file_size(file, error) > largestRecipe && !error)
        throw CliError("“" + file.string() + "” is too large to be a recipe.");
    return RecipeText::parse(Files::readAll(file), file.string());
}

Recipe recipeIn(const ProbeDocument& video, const fs::path& file)
{
    const bool hasComment = video.format && video.format->comment;
    if (!hasComment || !RecipeText::isRecipe(*video.format->comment))
        throw CliError("“" + file.string() +
                       "” has no recipe. Only videos that Stackreel has exported have one, and not those of "
                       "its first versions.");
    return RecipeText::parse(*video.format->comment, file.string());
}

/// Whether both paths lead to one file, which need not exist.
bool isSameFile(const fs::path& one, const fs::path& other)
{
    std::error_code error;
    return one.filename() == other.filename() &&
           fs::equivalent(one.parent_path(), other.parent_path(), error);
}

} // namespace

QCoro::Task<Recipe> RecipeFile::choices(ExportOptions options, std::stop_token stop)
{
    Recipe base;
    if (options.recipe)
        base = loadFile(absolutePath(*options.recipe));
    if (options.like) {
        const fs::path video = absolutePath(*options.like);
        requireRegularFile(video);
        base = recipeIn(co_await MediaProbe::report(video, stop), video);
    }
    const Recipe choices = options.choices.over(base);
    if (choices.to && *choices.to <= choices.from.value_or(0))
        throw UsageError("The end (--to) has to lie behind the start (--from).", "export");
    co_return choices;
}

void RecipeFile::save(const ExportRequest& request, const fs::path& file, bool overwrite)
{
    const Destination destination = Destination::check(request.input, absolutePath(file), overwrite);
    if (isSameFile(destination.file, Destination::check(request.input, request.output, true).file))
        throw ExportError("“" + destination.named.string() + "” cannot hold both the video and the recipe.");
    PartialFile partial(destination, PartialFile::Name::hidden);
    errno = 0;
    std::ofstream stream(partial.path(), std::ios::binary);
    stream << Recipe::of(request).jsonLines();
    stream.close();
    if (!stream)
        throw SystemError(errno != 0 ? errno : EIO, "write", destination.named);
    partial.moveIntoPlace();
}

} // namespace stackreel
