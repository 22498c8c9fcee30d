// Takes any bytes as standard error. The error text made from them has to be at most eight lines of valid
// UTF-8, and the error text made from that text has to be the same.

#include "media/ProcessOutput.h"
#include "media/Utf8.h"
#include "tests/fuzz/Require.h"

#include <algorithm>

using namespace stackreel;

namespace
{

std::string errorTextOf(std::string standardError)
{
    return ProcessOutput{.status = 1, .standardOutput = {}, .standardError = std::move(standardError)}
        .errorText();
}

std::ptrdiff_t lineEnds(std::string_view text)
{
    std::ptrdiff_t count = 0;
    for (std::size_t index = 0; index < text.size(); ++index)
        count += text[index] == '\n' && (index == 0 || text[index - 1] != '\r') ? 1 : 0;
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    const std::string text = errorTextOf({reinterpret_cast<const char*>(bytes), size});
    require(replacingInvalidUtf8(text) == text, "the text is valid UTF-8");
    require(lineEnds(text) < 8, "there are at most eight lines");
    require(text.empty() || text.front() != '\n', "no line is empty");
    require(errorTextOf(text) == text, "nothing more is dropped the second time");
    return 0;
}
