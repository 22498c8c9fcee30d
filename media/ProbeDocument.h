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

/// A report that is no JSON, or whose values are not of the kinds `ProbeDocument` expects. `what()` names the
/// place.
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

/// What is read of the JSON report of `ffprobe`. Keys without a field here are ignored.
struct ProbeDocument {
    std::vector<ProbeStream> streams;
    std::optional<ProbeFormat> format;

    /// Throws `DecodingError` for anything that is not JSON, a missing "streams", or a listed key with a
    /// value of another kind. A null stands for an absent optional value.
    static ProbeDocument decode(std::string_view json);
};

} // namespace stackreel
