#include "cli/AbsolutePath.h"
#include "cli/Commands.h"
#include "cli/FactsText.h"
#include "media/MediaProbe.h"
#include "platform/StandardStreams.h"

namespace stackreel
{

QCoro::Task<> Commands::probe(ProbeOptions options, std::stop_token stop)
{
    const ProbeDocument document = co_await MediaProbe::report(absolutePath(options.source), stop);
    const MediaInfo media = MediaProbe::facts(document);
    StandardStreams::writeOutput(options.json ? FactsText::json(media, SourceDetails::of(document))
                                              : FactsText::lines(media));
}

} // namespace stackreel
