#include "cli/PrintableText.h"

namespace stackreel
{

namespace
{

bool isControl(unsigned char byte)
{
    return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7f;
}

/// Whether the two bytes are one of the control characters U+0080 to U+009F.
bool isControl(unsigned char byte, unsigned char next)
{
    return byte == 0xc2 && next >= 0x80 && next <= 0x9f;
}

} // namespace

std::string printableText(std::string_view text)
{
    std::string printable;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        const bool isPair =
            index + 1 < text.size() && isControl(byte, static_cast<unsigned char>(text[index + 1]));
        printable += isControl(byte) || isPair ? '?' : text[index];
        index += isPair ? 1 : 0;
    }
    return printable;
}

} // namespace stackreel
