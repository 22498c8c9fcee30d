#include "media/Utf8.h"

#include <cstddef>

namespace stackreel
{

namespace
{

struct Sequence {
    std::size_t length;
    bool isValid;
};

/// Whether `byte` is valid at position `index` of the UTF-8 sequence of a character, whose first byte is
/// `lead`. The valid range of the second byte depends on `lead`: this excludes overlong forms, surrogates and
/// values above U+10FFFF.
bool mayFollow(unsigned char lead, std::size_t index, unsigned char byte)
{
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (index == 1)
        return byte >= lowest && byte <= highest;
    return byte >= 0x80 && byte <= 0xBF;
}

/// The length of the first character of a text, or of the invalid bytes at its start. The text must not be
/// empty.
Sequence firstSequence(std::string_view bytes)
{
    const auto lead = static_cast<unsigned char>(bytes.front());
    if (lead < 0x80)
        return {1, true};
    if (lead < 0xC2 || lead > 0xF4)
        return {1, false};
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    for (std::size_t index = 1; index < length; ++index)
        if (index == bytes.size() || !mayFollow(lead, index, static_cast<unsigned char>(bytes[index])))
            return {index, false};
    return {length, true};
}

} // namespace

std::string replacingInvalidUtf8(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Sequence sequence = firstSequence(bytes);
        text += sequence.isValid ? bytes.substr(0, sequence.length) : "\uFFFD";
        bytes.remove_prefix(sequence.length);
    }
    return text;
}

} // namespace stackreel
