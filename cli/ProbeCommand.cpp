#include "cli/AbsolutePath.h"
#include "cli/Commands.h"
#include "cli/FactsText.h"
#include "media/MediaProbe.h"
#include "system/StandardStreams.h"

namespace stackreel
{

QCoro::Task<> Commands::probe(ProbeOptions options, std::stop_token stop)
{
    const ProbeDocument document = co_await MediaProbe::report(absolutePath(options.source), stop);
    const MediaInfo media = MediaProbe::facts(document);
    const SourceDetails details = SourceDetails::of(document);
    StandardStreams::writeOutput(options.json ? FactsText::json(media, details)
                                              : FactsText::lines(media, details));
}

} // namespace stackreel
