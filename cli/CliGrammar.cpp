#include "cli/CliGrammar.h"

#include "cli/UsageError.h"
#include "system/Version.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr const char* description =
    "Turns a landscape video into a vertical one: two crops of it, one above the other.";
constexpr const char* footer = "Exit status: 0 done, 1 failed, 2 wrong usage; 130, 143, 129 and 131 when "
                               "ended by Ctrl-C, SIGTERM, a hang-up or Ctrl-\\.";

void describeFile(CLI::App* command, const char* name, std::string& value, const char* meaning)
{
    command->add_option(name, value, meaning)->type_name("");
}

void describeFlag(CLI::App* command, const char* name, bool& value, const char* meaning)
{
    command->add_flag(name, value, meaning)->disable_flag_override();
}

bool isOption(const std::string& word)
{
    return word.starts_with('-') && word != "-";
}

/// Shows the forms of the commands in their help. For CLI11 no file is required, because it does not see
/// those after "--".
class HelpFormatter : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App* app, std::string name) const override
    {
        const std::string start = name + " [OPTIONS] ";
        if (app->get_name() == "probe")
            return "Usage: " + start + "SOURCE\n";
        if (app->get_name() == "export")
            return "Usage: " + start + "SOURCE [DESTINATION]\n       " + start + "SOURCE... --into FOLDER\n";
        return CLI::Formatter::make_usage(app, name);
    }
};

UsageError usageError(const CLI::ParseError& error, const std::string& command)
{
    const std::string text = error.what();
    if (command.empty())
        return {"A command is missing: probe or export.", command};
    if (text.ends_with("missing"))
        return {"The option " + text.substr(0, text.find(':')) + " needs a value.", command};
    if (text.ends_with("flag override"))
        return {"The option --" + text.substr(0, text.find(' ')) + " takes no value.", command};
    return {text + ".", command};
}

} // namespace

CliGrammar::CliGrammar()
    : m_app(std::make_unique<CLI::App>(description, "stackreel-cli")),
      m_probe(m_app->add_subcommand("probe", "Show what a video is")),
      m_export(m_app->add_subcommand("export", "Make the vertical video of a landscape one"))
{
    m_app->set_version_flag("--version", std::string("stackreel-cli ") + buildVersion(), "Show the version");
    m_app->require_subcommand(1);
    m_app->allow_extras();
    m_app->footer(footer);
    const auto formatter = std::make_shared<HelpFormatter>();
    for (CLI::App* app : {m_app.get(), m_probe, m_export}) {
        app->formatter(formatter);
        app->set_help_flag("-h,--help", "Show this help");
        app->get_formatter()->column_width(30);
        app->get_formatter()->label("SUBCOMMAND", "COMMAND ...");
        app->get_formatter()->label("Positionals", "Files");
        app->get_formatter()->label("REQUIRED", "");
    }
    m_probe->group("Commands");
    m_export->group("Commands");
    describeProbe();
    describeExport();
}

CliGrammar::~CliGrammar() = default;

std::optional<std::string> CliGrammar::parse(std::vector<std::string> arguments)
{
    // CLI11 does not tell a surplus file after "--" from an unknown option.
    const auto separator = std::find(arguments.begin(), arguments.end(), "--");
    if (separator != arguments.end()) {
        m_afterSeparator.assign(separator + 1, arguments.end());
        arguments.erase(separator, arguments.end());
    }
    // For CLI11 the argument "++" ends a subcommand. "./++" names the same file and has no such meaning.
    std::replace(arguments.begin(), arguments.end(), std::string("++"), std::string("./++"));
    std::reverse(arguments.begin(), arguments.end());
    try {
        m_app->parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        return m_app->help();
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
        throw usageError(error, command());
    }
    return std::nullopt;
}

std::string CliGrammar::command() const
{
    const auto parsed = m_app->get_subcommands();
    return parsed.empty() ? std::string() : parsed.front()->get_name();
}

bool CliGrammar::isGiven(const std::string& option) const
{
    return m_export->count(option) > 0;
}

std::vector<std::string> CliGrammar::files() const
{
    const auto parsed = m_app->get_subcommands();
    if (parsed.empty())
        return {};
    std::vector<std::string> files;
    if (parsed.front()->count("SOURCE") > 0)
        files.push_back(m_source);
    if (m_export->count("DESTINATION") > 0)
        files.push_back(m_destination);
    for (const std::string& word : parsed.front()->remaining())
        if (!isOption(word))
            files.push_back(word);
    files.insert(files.end(), m_afterSeparator.begin(), m_afterSeparator.end());
    return files;
}

std::vector<std::string> CliGrammar::extraWords() const
{
    std::vector<std::string> words = m_app->remaining();
    for (const CLI::App* command : m_app->get_subcommands())
        for (const std::string& word : command->remaining())
            if (isOption(word))
                words.push_back(word);
    return words;
}

std::vector<std::string> CliGrammar::knownWords() const
{
    const std::string name = command();
    if (name.empty())
        return {"probe", "export", "--help", "--version"};
    std::vector<std::string> words;
    for (const CLI::Option* option : m_app->get_subcommand(name)->get_options())
        for (const std::string& word : option->get_lnames())
            words.push_back("--" + word);
    return words;
}

void CliGrammar::describeValue(const char* name, std::string& value, const char* kind, const char* meaning)
{
    m_export->add_option(name, value, meaning)
        ->type_name(kind)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void CliGrammar::describeProbe()
{
    m_probe->allow_extras();
    describeFile(m_probe, "SOURCE", m_source, "The video");
    describeFlag(m_probe, "--json", m_values.json, "Print one JSON object");
}

void CliGrammar::describeExport()
{
    m_export->allow_extras();
    describeFile(m_export, "SOURCE", m_source, "The landscape video");
    describeFile(m_export, "DESTINATION", m_destination,
                 "The .mp4 file to write [beside the source, its name with -vertical.mp4]");
    describeValue("--aspect", m_values.aspect, "9:16|4:5|1:1|Custom", "Shape of the output [9:16]");
    describeValue("--size", m_values.size, "WxH",
                  "Size of a Custom output in pixels, each side 2 to 16384, rounded down to even");
    describeValue("--top", m_values.top, "X,Y,W,H",
                  "Upper crop in fractions of the displayed frame, moved and sized into it [left]");
    describeValue("--bottom", m_values.bottom, "X,Y,W,H", "Lower crop, likewise [right]");
    describeValue("--from", m_values.from, "S", "Start in seconds [0]");
    describeValue("--to", m_values.to, "S",
                  "End in seconds [the source's end]; at least 0.25 s are exported");
    describeValue("--audio-track", m_values.audioTrack, "N", "Sound track as probe lists them [1]");
    describeValue("--recipe", m_values.recipe, "FILE",
                  "Take the choices from a recipe; the options beside it win");
    describeValue("--like", m_values.like, "VIDEO", "Take the choices from an exported video, likewise");
    describeValue("--save-recipe", m_values.saveRecipe, "FILE", "Write the choices to a recipe");
    describeFlag(m_export, "--no-audio", m_values.noAudio, "Leave the sound out");
    describeValue("--into", m_values.into, "FOLDER",
                  "Export all files, one after the other, into this folder, with the usual names");
    describeFlag(m_export, "--overwrite", m_values.overwrite,
                 "Replace an existing destination (never the source)");
    describeFlag(m_export, "--dry-run", m_values.dryRun, "Only print the arguments of ffmpeg, one per line");
    describeFlag(m_export, "--json", m_values.json,
                 "Print a JSON object per line: start, progress, result; with --dry-run, a JSON array");
    describeFlag(m_export, "--quiet", m_values.quiet, "Show no progress");
}

} // namespace stackreel
