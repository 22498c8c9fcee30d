#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace stackreel
{

/// The values of the options as the user wrote them; empty for options that were not given.
struct RawOptions {
    std::string aspect;
    std::string size;
    std::string top;
    std::string bottom;
    std::string from;
    std::string to;
    std::string audioTrack;
    std::string recipe;
    std::string like;
    std::string saveRecipe;
    std::string into;
    bool noAudio = false;
    bool overwrite = false;
    bool dryRun = false;
    bool json = false;
    bool quiet = false;
};

/// The grammar of the command line, and the result of parsing one command line with it. Does not interpret
/// the values. Only the implementation includes CLI11, which takes seconds to compile.
class CliGrammar
{
public:
    CliGrammar();
    ~CliGrammar();
    CliGrammar(const CliGrammar&) = delete;
    CliGrammar& operator=(const CliGrammar&) = delete;

    /// Parses the arguments, which do not include the program's name. Call it once per object. Returns the
    /// help or the version if the user asked for it. Throws `UsageError` when something is missing. A word
    /// that matches nothing is not an error; `extraWords` returns it.
    std::optional<std::string> parse(std::vector<std::string> arguments);

    const RawOptions& values() const { return m_values; }
    /// The command in use; empty when there is none.
    std::string command() const;
    /// Whether an option of `export` was given ("--from").
    bool isGiven(const std::string& option) const;
    /// The files of the command in use, in order.
    std::vector<std::string> files() const;
    /// The words that are neither an option nor a file of the command, in order.
    std::vector<std::string> extraWords() const;
    /// The words to suggest for an unknown one: the options of the command in use, or else the commands.
    std::vector<std::string> knownWords() const;

private:
    void describeProbe();
    void describeExport();
    void describeValue(const char* name, std::string& value, const char* kind, const char* meaning);

    RawOptions m_values;
    std::string m_source;
    std::string m_destination;
    std::vector<std::string> m_afterSeparator; ///< the files after "--"
    std::unique_ptr<CLI::App> m_app;
    CLI::App* m_probe;
    CLI::App* m_export;
};

} // namespace stackreel
