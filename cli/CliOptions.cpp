#include "cli/CliOptions.h"

#include "cli/CliGrammar.h"
#include "cli/NearestWord.h"
#include "cli/OptionText.h"

#include <algorithm>
#include <cstdint>

namespace stackreel
{

namespace
{

UsageError unknownWordError(const CliGrammar& grammar, const std::string& word)
{
    const bool isOption = word.starts_with('-') && word != "-";
    const std::string command = grammar.command();
    if (!isOption && !command.empty())
        return {"“" + word + "” is one file too many.", command};

    // "--ovrwrite=1" is compared as "--ovrwrite".
    const std::string name = word.substr(0, word.find('='));
    const auto nearest = nearestWord(name, grammar.knownWords());
    if (nearest == name)
        return {"The option " + name + " has to follow the command.", command};
    std::string message =
        isOption ? "There is no option " + name + "." : "There is no command “" + word + "”.";
    if (nearest)
        message += " Did you mean " + *nearest + "?";
    else if (isOption && !command.empty())
        message += " A file of that name is written ./" + word + ".";
    return {message, command};
}

UsageError wrongValueError(const std::string& option, const std::string& value, const std::string& expected)
{
    return {"The value “" + value + "” of " + option + " is not " + expected + ".", "export"};
}

std::optional<double> givenSeconds(const CliGrammar& grammar, const std::string& option,
                                   const std::string& text)
{
    if (!grammar.isGiven(option))
        return std::nullopt;
    const auto value = OptionText::seconds(text);
    if (!value)
        throw wrongValueError(option, text, "a time in seconds, such as 12.5");
    return value;
}

std::optional<CropRegion> givenRegion(const CliGrammar& grammar, const std::string& option,
                                      const std::string& text)
{
    if (!grammar.isGiven(option))
        return std::nullopt;
    const auto value = OptionText::region(text);
    if (!value)
        throw wrongValueError(option, text,
                              "a region X,Y,W,H in fractions of the frame, such as 0.04,0.14,0.45,0.72");
    return value;
}

std::optional<std::int64_t> givenTrack(const CliGrammar& grammar)
{
    const std::string& text = grammar.values().audioTrack;
    const auto track = OptionText::track(text);
    if (grammar.isGiven("--audio-track") && !track)
        throw wrongValueError("--audio-track", text,
                              "the number of a sound track, such as 1 (stackreel-cli probe lists them)");
    return track;
}

/// The given aspect and size.
Recipe givenShape(const CliGrammar& grammar)
{
    const RawOptions& raw = grammar.values();
    Recipe shape;
    if (grammar.isGiven("--aspect")) {
        shape.aspect = outputAspect(raw.aspect);
        if (!shape.aspect)
            throw wrongValueError("--aspect", raw.aspect, "9:16, 4:5, 1:1 or Custom");
    }
    if (!grammar.isGiven("--size"))
        return shape;

    if (shape.aspect.value_or(OutputAspect::custom) != OutputAspect::custom)
        throw UsageError(
            "A size goes with --aspect Custom only, as " + raw.aspect + " has a size of its own.", "export");
    shape.size = OptionText::size(raw.size);
    if (!shape.size)
        throw wrongValueError("--size", raw.size,
                              "a size WxH with sides of 2 to 16384 pixels, such as 720x1280");
    shape.aspect = OutputAspect::custom;
    return shape;
}

Recipe givenChoices(const CliGrammar& grammar)
{
    const RawOptions& raw = grammar.values();
    Recipe choices = givenShape(grammar);
    choices.top = givenRegion(grammar, "--top", raw.top);
    choices.bottom = givenRegion(grammar, "--bottom", raw.bottom);
    choices.from = givenSeconds(grammar, "--from", raw.from);
    choices.to = givenSeconds(grammar, "--to", raw.to);
    choices.audioTrack = givenTrack(grammar);
    if (raw.noAudio && choices.audioTrack)
        throw UsageError("The options --no-audio and --audio-track exclude each other.", "export");
    // A chosen track also brings back the sound that a recipe leaves out.
    if (raw.noAudio || choices.audioTrack)
        choices.sound = !raw.noAudio;
    if (choices.to && *choices.to <= choices.from.value_or(0))
        throw UsageError("The end (--to) has to lie behind the start (--from).", "export");
    return choices;
}

std::optional<std::filesystem::path> givenFile(const CliGrammar& grammar, const std::string& option,
                                               const std::string& name)
{
    if (!grammar.isGiven(option))
        return std::nullopt;
    if (name.empty())
        throw UsageError("The name after " + option + " is empty.", "export");
    return name;
}

/// The files of the command, at most `most`. There is at least one.
std::vector<std::string> givenFiles(const CliGrammar& grammar, std::size_t most)
{
    std::vector<std::string> files = grammar.files();
    if (files.empty())
        throw UsageError("The source video is missing.", grammar.command());
    if (files.size() > most)
        throw UsageError("“" + files[most] + "” is one file too many.", grammar.command());
    if (files.front().empty())
        throw UsageError("The name of the source video is empty.", grammar.command());
    return files;
}

ExportOptions optionsOfExport(const CliGrammar& grammar)
{
    const RawOptions& raw = grammar.values();
    ExportOptions options;
    options.choices = givenChoices(grammar);
    options.recipe = givenFile(grammar, "--recipe", raw.recipe);
    options.like = givenFile(grammar, "--like", raw.like);
    options.saveRecipe = givenFile(grammar, "--save-recipe", raw.saveRecipe);
    options.overwrite = raw.overwrite;
    options.dryRun = raw.dryRun;
    options.json = raw.json;
    options.quiet = raw.quiet;
    if (options.recipe && options.like)
        throw UsageError("The options --recipe and --like exclude each other.", "export");
    return options;
}

ExportOptions exportOptions(const CliGrammar& grammar)
{
    const auto files = givenFiles(grammar, 2);
    ExportOptions options = optionsOfExport(grammar);
    options.source = files[0];
    if (files.size() > 1 && files[1].empty())
        throw UsageError("The name of the destination is empty.", "export");
    if (files.size() > 1)
        options.destination = files[1];
    return options;
}

ExportManyOptions exportManyOptions(const CliGrammar& grammar, const std::filesystem::path& into)
{
    const auto files = givenFiles(grammar, SIZE_MAX);
    if (std::find(files.begin(), files.end(), "") != files.end())
        throw UsageError("The name of a source video is empty.", "export");
    ExportManyOptions options = {
        .sources = {files.begin(), files.end()}, .into = into, .each = optionsOfExport(grammar)};
    if (options.each.saveRecipe)
        throw UsageError("The options --into and --save-recipe exclude each other.", "export");
    return options;
}

CliOptions optionsFrom(const CliGrammar& grammar)
{
    if (grammar.command() == "probe")
        return ProbeOptions{.source = givenFiles(grammar, 1).front(), .json = grammar.values().json};
    if (const auto into = givenFile(grammar, "--into", grammar.values().into))
        return exportManyOptions(grammar, *into);
    return exportOptions(grammar);
}

} // namespace

CliOptions parseOptions(const std::vector<std::string>& arguments)
{
    CliGrammar grammar;
    std::optional<UsageError> problem;
    try {
        if (const auto text = grammar.parse(arguments))
            return Information{*text};
    } catch (const UsageError& error) {
        problem = error;
    }

    // An unknown word usually causes the other errors, too, so it is reported first.
    if (const auto unknown = grammar.extraWords(); !unknown.empty())
        return unknownWordError(grammar, unknown.front());
    if (problem)
        return *problem;
    try {
        return optionsFrom(grammar);
    } catch (const UsageError& error) {
        return error;
    }
}

} // namespace stackreel
