#include "cli/AbsolutePath.h"
#include "cli/Commands.h"
#include "cli/FactsText.h"
#include "media/MediaProbe.h"
#include "platform/StandardStreams.h"

namespace stackreel
{

QCoro::Task<> Commands::probe(ProbeOptions options, std::stop_token stop)
{
    const MediaInfo media = co_await MediaProbe::inspect(absolutePath(options.source), stop);
    StandardStreams::writeOutput(options.json ? FactsText::json(media) : FactsText::lines(media));
}

} // namespace stackreel
