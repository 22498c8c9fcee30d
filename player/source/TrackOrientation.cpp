#include "player/source/TrackOrientation.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string_view>

namespace stackreel
{

namespace
{

/// Where something lies in the file, in bytes.
struct Span {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

/// A file in which boxes lie one behind the other, some of them full of boxes themselves.
class BoxFile
{
public:
    explicit BoxFile(const std::filesystem::path& file) : m_stream(file, std::ios::binary)
    {
        m_stream.seekg(0, std::ios::end);
        const std::streamoff size = m_stream.tellg();
        m_size = size > 0 ? static_cast<std::uint64_t>(size) : 0;
    }

    Span whole() const { return {0, m_size}; }

    /// What the first box of a type within `in` contains.
    std::optional<Span> find(std::string_view type, Span in)
    {
        while (in.end - in.begin >= plainHeader && m_boxesLeft-- > 0) {
            std::uint64_t size = number(in.begin, 4);
            std::uint64_t header = plainHeader;
            if (size == 1) {
                size = number(in.begin + plainHeader, 8);
                header = 2 * plainHeader;
            } else if (size == 0) {
                size = in.end - in.begin;
            }
            if (size < header || size > in.end - in.begin)
                return std::nullopt;
            if (isType(in.begin + 4, type))
                return Span{in.begin + header, in.begin + size};
            in.begin += size;
        }
        return std::nullopt;
    }

    /// A number of at most 8 bytes, the highest first; 0 beyond the file.
    std::uint64_t number(std::uint64_t at, int bytes)
    {
        std::array<unsigned char, 8> read{};
        m_stream.clear();
        m_stream.seekg(static_cast<std::streamoff>(at));
        m_stream.read(reinterpret_cast<char*>(read.data()), bytes);
        std::uint64_t number = 0;
        for (std::size_t i = 0; m_stream && i < static_cast<std::size_t>(bytes); ++i)
            number = number << 8 | read.at(i);
        return number;
    }

    bool isType(std::uint64_t at, std::string_view type)
    {
        std::uint64_t wanted = 0;
        for (char letter : type)
            wanted = wanted << 8 | static_cast<unsigned char>(letter);
        return number(at, 4) == wanted;
    }

private:
    static constexpr std::uint64_t plainHeader = 8;

    std::ifstream m_stream;
    std::uint64_t m_size = 0;
    int m_boxesLeft = 2000; ///< a file of nothing but empty boxes must not be read to its end
};

bool isVideo(BoxFile& file, Span track)
{
    constexpr std::uint64_t handlerType = 8;
    const auto media = file.find("mdia", track);
    const auto handler = media ? file.find("hdlr", *media) : std::nullopt;
    return handler && file.isType(handler->begin + handlerType, "vide");
}

/// The turning part of the matrix of a track: each in 16.16 fixed point.
std::array<std::uint32_t, 4> matrixOf(BoxFile& file, Span track)
{
    const auto header = file.find("tkhd", track);
    if (!header)
        return {};
    const bool longTimes = file.number(header->begin, 1) == 1;
    const std::uint64_t at = header->begin + (longTimes ? 52 : 40);
    std::array<std::uint32_t, 4> matrix{};
    for (std::size_t i = 0; i < matrix.size(); ++i)
        matrix.at(i) = static_cast<std::uint32_t>(file.number(at + (i / 2 * 3 + i % 2) * 4, 4));
    return matrix;
}

} // namespace

Orientation ignoredOrientation(const std::filesystem::path& path)
{
    constexpr std::uint32_t minusOne = 0xffff0000;
    BoxFile file(path);
    const auto movie = file.find("moov", file.whole());
    auto track = movie ? file.find("trak", *movie) : std::nullopt;
    while (track && !isVideo(file, *track))
        track = file.find("trak", {track->end, movie->end});
    if (track && matrixOf(file, *track) == std::array<std::uint32_t, 4>{0, minusOne, minusOne, 0})
        return {1, true};
    return {};
}

} // namespace stackreel
