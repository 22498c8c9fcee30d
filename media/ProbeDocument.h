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

struct ProbeStream {
    std::optional<std::string> codecType;
    std::optional<std::string> codecName;
    std::optional<std::int64_t> width;   ///< coded pixels
    std::optional<std::int64_t> height;  ///< coded pixels
    std::optional<std::string> duration; ///< decimal text, seconds
    std::optional<std::map<std::string, std::string>> tags;
    std::optional<std::vector<ProbeSideData>> sideDataList;
};

struct ProbeFormat {
    std::optional<std::string> duration; ///< decimal text, seconds
};

/// The part of the JSON report of `ffprobe` that the program reads. Other keys are ignored.
struct ProbeDocument {
    std::vector<ProbeStream> streams;
    std::optional<ProbeFormat> format;

    /// The first stream whose codec type equals this one; null where there is none.
    const ProbeStream* firstStream(std::string_view codecType) const;

    /// Throws `DecodingError` when the text is not JSON, when "streams" is missing, or when the type of a
    /// value differs from that of its field here. A null counts as an absent value.
    static ProbeDocument decode(std::string_view json);
};

} // namespace stackreel
