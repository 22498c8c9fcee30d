#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <variant>

namespace stackreel
{

/// An error of the media tools. A plain value: copyable and comparable. `what()` and `errorDescription()`
/// return the message shown to the user, in UTF-8.
class MediaToolError : public std::exception
{
public:
    /// The tool's executable was not found.
    struct ToolMissing {
        std::string name; ///< executable file name
        bool operator==(const ToolMissing&) const = default;
    };
    /// The tool ended with a status other than 0.
    struct ProcessFailed {
        std::string tool;    ///< display name, "FFmpeg" or "ffprobe"
        std::int32_t status; ///< the child's exit status
        std::string message; ///< the last lines of the tool's error output, may be empty
        bool operator==(const ProcessFailed&) const = default;
    };
    /// The tool's report cannot be decoded.
    struct InvalidProbe {
        bool operator==(const InvalidProbe&) const = default;
    };
    /// The file has no video stream, or one without a size.
    struct NoVideo {
        bool operator==(const NoVideo&) const = default;
    };
    /// The displayed picture is not wider than it is high.
    struct VerticalSource {
        bool operator==(const VerticalSource&) const = default;
    };
    /// The operation was cancelled.
    struct Cancelled {
        bool operator==(const Cancelled&) const = default;
    };
    using Case = std::variant<ToolMissing, ProcessFailed, InvalidProbe, NoVideo, VerticalSource, Cancelled>;

    static MediaToolError toolMissing(std::string name);
    static MediaToolError processFailed(std::string tool, std::int32_t status, std::string message);
    static MediaToolError invalidProbe() { return MediaToolError(InvalidProbe{}); }
    static MediaToolError noVideo() { return MediaToolError(NoVideo{}); }
    static MediaToolError verticalSource() { return MediaToolError(VerticalSource{}); }
    static MediaToolError cancelled() { return MediaToolError(Cancelled{}); }

    const Case& value() const { return m_case; }
    const std::string& errorDescription() const { return m_description; }
    const char* what() const noexcept override { return m_description.c_str(); }

    bool operator==(const MediaToolError& other) const { return m_case == other.m_case; }

private:
    explicit MediaToolError(Case value);

    Case m_case;
    std::string m_description;
};

} // namespace stackreel
