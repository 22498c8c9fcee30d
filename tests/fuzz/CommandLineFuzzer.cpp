// Parses any bytes as command-line arguments, separated by line feeds. The result has to be valid options or
// a text for the user. No exception may be thrown.

#include "cli/CliOptions.h"
#include "tests/fuzz/Require.h"

#include <cmath>

using namespace stackreel;

namespace
{

std::vector<std::string> argumentsOf(std::string_view text)
{
    std::vector<std::string> arguments;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        // Cut the text at the first NUL, because an argument of a process ends there.
        arguments.emplace_back(std::string(text.substr(0, end)).c_str());
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return arguments;
}

bool isInFrame(const CropRegion& region)
{
    return region.clampedToFrame() == region;
}

void check(const ExportOptions& options)
{
    const Recipe& choices = options.choices;
    const double from = choices.from.value_or(0);
    require(std::isfinite(from) && from >= 0, "a range starts in the clip");
    require(!choices.to || (std::isfinite(*choices.to) && *choices.to > from),
            "a range ends after its start");
    require(!choices.top || isInFrame(*choices.top), "the top region lies in the frame");
    require(!choices.bottom || isInFrame(*choices.bottom), "the bottom region lies in the frame");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    const CliOptions options = parseOptions(argumentsOf({reinterpret_cast<const char*>(bytes), size}));
    if (const auto* exportOptions = std::get_if<ExportOptions>(&options))
        check(*exportOptions);
    if (const auto* many = std::get_if<ExportManyOptions>(&options)) {
        require(!many->sources.empty(), "there is a source");
        check(many->each);
    }
    return 0;
}
