#include "cli/AbsolutePath.h"
#include "cli/CliError.h"
#include "cli/Commands.h"
#include "cli/ExportEvents.h"
#include "cli/PrintableText.h"
#include "cli/RecipeFile.h"
#include "model/ExportFileName.h"
#include "system/StandardStreams.h"
#include "system/SystemError.h"

#include <algorithm>
#include <map>

namespace stackreel
{

namespace
{

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

std::string quoted(const fs::path& path)
{
    return "“" + path.string() + "”";
}

fs::path folderAt(const fs::path& path)
{
    fs::path folder = absolutePath(path);
    std::error_code error;
    const fs::file_status found = fs::status(folder, error);
    if (found.type() == fs::file_type::not_found)
        throw CliError("The folder " + quoted(folder) + " does not exist.");
    if (found.type() == fs::file_type::none)
        throw SystemError(error.value(), "read", folder);
    if (!fs::is_directory(found))
        throw CliError(quoted(folder) + " is not a folder.");
    return folder;
}

/// Throws where an export would replace one of the sources, which may not have been read by then.
void requireNoSource(const fs::path& destination, const Paths& sources)
{
    std::error_code error;
    if (!fs::exists(destination, error))
        return;
    const auto isSame = [&](const fs::path& source) { return fs::equivalent(source, destination, error); };
    if (std::any_of(sources.begin(), sources.end(), isSame))
        throw CliError(quoted(destination) + " is a source itself, which is never overwritten.");
}

/// The destination of each source.
Paths destinationsFor(const Paths& sources, const fs::path& folder)
{
    Paths destinations;
    std::map<fs::path, fs::path> sourceOf;
    for (const fs::path& source : sources) {
        const fs::path destination = folder / exportFileName(source);
        const auto [other, isNew] = sourceOf.emplace(destination, source);
        if (!isNew)
            throw CliError(quoted(other->second) + " and " + quoted(source) + " would both become " +
                           quoted(destination) + ". Export one of them by itself, with another name.");
        requireNoSource(destination, sources);
        destinations.push_back(destination);
    }
    return destinations;
}

/// The exports of several sources.
class Exports
{
public:
    explicit Exports(ExportManyOptions options) : m_options(std::move(options)) {}

    /// Throws what is wrong with the options, before anything is exported, and what `Commands::exportMany`
    /// throws.
    QCoro::Task<> run(std::stop_token stop)
    {
        m_tally.notStarted = m_options.sources.size();
        Paths destinations;
        std::exception_ptr error;
        try {
            destinations = co_await prepare(stop);
        } catch (...) {
            error = std::current_exception();
        }
        if (error)
            refuse(error);
        for (std::size_t i = 0; i < destinations.size() && !m_cancellation; ++i) {
            m_options.each.source = m_options.sources[i];
            m_options.each.destination = destinations[i];
            co_await exportNext(stop);
        }
        summarise();
    }

private:
    bool printsEvents() const { return m_options.each.json && !m_options.each.dryRun; }

    /// Returns the destinations, and replaces a recipe by its choices.
    QCoro::Task<Paths> prepare(std::stop_token stop)
    {
        ExportOptions& each = m_options.each;
        each.choices = co_await RecipeFile::choices(each, stop);
        each.recipe.reset();
        each.like.reset();
        co_return destinationsFor(m_options.sources, folderAt(m_options.into));
    }

    [[noreturn]] void refuse(const std::exception_ptr& error) const
    {
        if (printsEvents())
            StandardStreams::tryToWriteOutput(ExportEvents::failed(std::nullopt, Failure::of(error)) +
                                              ExportEvents::summary(m_tally));
        std::rethrow_exception(error);
    }

    QCoro::Task<> exportNext(std::stop_token stop)
    {
        --m_tally.notStarted;
        std::exception_ptr error;
        try {
            co_await Commands::exportVideo(m_options.each, stop);
            ++m_tally.saved;
            // An empty line ends the arguments of each dry run.
            if (m_options.each.dryRun && !m_options.each.json)
                StandardStreams::tryToWriteOutput("\n");
        } catch (...) {
            error = std::current_exception();
        }
        if (error)
            recordFailure(error);
    }

    void recordFailure(const std::exception_ptr& error)
    {
        ++m_tally.failed;
        const Failure failure = Failure::of(error);
        if (failure.code == "cancelled") {
            m_cancellation = error;
            return;
        }
        m_failed += (m_failed.empty() ? "" : ", ") + quoted(m_options.each.source);
        StandardStreams::writeError(printableText(quoted(m_options.each.source)) + ": " + failure.text() +
                                    "\n");
    }

    void summarise() const
    {
        if (printsEvents())
            StandardStreams::tryToWriteOutput(ExportEvents::summary(m_tally));
        if (m_cancellation)
            std::rethrow_exception(m_cancellation);
        const std::string all = std::to_string(m_options.sources.size());
        if (m_tally.failed > 0)
            throw CliError(std::to_string(m_tally.failed) + " of " + all + " exports failed: " + m_failed +
                           ".");
        if (!m_options.each.json && !m_options.each.dryRun)
            StandardStreams::tryToWriteOutput("Saved all " + all + " videos.\n");
    }

    ExportManyOptions m_options;
    ExportTally m_tally;
    std::string m_failed;
    std::exception_ptr m_cancellation;
};

} // namespace

QCoro::Task<> Commands::exportMany(ExportManyOptions options, std::stop_token stop)
{
    Exports exports(std::move(options));
    co_await exports.run(stop);
}

} // namespace stackreel
