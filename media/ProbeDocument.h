#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace stackreel
{

/// A report that is not valid JSON, or that has a value of an unexpected type. `what()` names the JSON path.
class DecodingError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

struct ProbeSideData {
    std::optional<std::int64_t> rotation; ///< degrees
};

/// What a stream says about itself that no export depends on. A value of an unexpected type counts as absent.
struct ProbeStreamDetails {
    std::optional<std::string> averageFrameRate; ///< a fraction, "30000/1001"; "0/0" when unknown
    std::optional<std::string> colourMatrix;
    std::optional<std::string> colourPrimaries;
    std::optional<std::string> colourTransfer;
    std::optional<std::string> colourRange; ///< "tv" or "pc"
    std::optional<std::string> channelLayout;
    std::optional<std::int64_t> channels;
};

struct ProbeStream {
    std::optional<std::string> codecType;
    std::optional<std::string> codecName;
    std::optional<std::int64_t> width;   ///< coded pixels
    std::optional<std::int64_t> height;  ///< coded pixels
    std::optional<std::string> duration; ///< decimal text, seconds
    std::optional<std::string> frames;   ///< decimal text; known for MP4 and MOV
    std::optional<std::map<std::string, std::string>> tags;
    std::optional<std::vector<ProbeSideData>> sideDataList;
    ProbeStreamDetails details = {};
};

struct ProbeFormat {
    std::optional<std::string> duration;     ///< decimal text, seconds
    std::optional<std::string> comment = {}; ///< the tag of that name; absent where it is not a text
};

/// The part of the JSON report of `ffprobe` that the program reads. Other keys are ignored.
struct ProbeDocument {
    std::vector<ProbeStream> streams;
    std::optional<ProbeFormat> format;

    /// The first stream whose codec type equals this one; null where there is none.
    const ProbeStream* firstStream(std::string_view codecType) const;

    /// Throws `DecodingError` when the text is not JSON, when "streams" is missing, or when the type of a
    /// value differs from that of its field here, except for details. A null counts as an absent value.
    static ProbeDocument decode(std::string_view json);
};

} // namespace stackreel
