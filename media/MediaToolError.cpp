#include "media/MediaToolError.h"

#include <utility>

namespace stackreel
{

namespace
{

struct Description {
    std::string operator()(const MediaToolError::ToolMissing& error) const
    {
        return error.name + " is missing. Build the bundled media tools first.";
    }
    std::string operator()(const MediaToolError::ProcessFailed& error) const
    {
        return error.message.empty() ? error.tool + " could not process this video." : error.message;
    }
    std::string operator()(MediaToolError::InvalidProbe) const
    {
        return "The video details could not be read.";
    }
    std::string operator()(MediaToolError::NoVideo) const
    {
        return "This file does not contain a video stream.";
    }
    std::string operator()(MediaToolError::VerticalSource) const
    {
        return "Choose a horizontal video. Stackreel only stacks crops from horizontal sources.";
    }
    std::string operator()(MediaToolError::Cancelled) const { return "The export was cancelled."; }
};

} // namespace

MediaToolError::MediaToolError(Case value)
    : m_case(std::move(value)), m_description(std::visit(Description{}, m_case))
{
}

MediaToolError MediaToolError::toolMissing(std::string name)
{
    return MediaToolError(ToolMissing{std::move(name)});
}

MediaToolError MediaToolError::processFailed(std::string tool, std::int32_t status, std::string message)
{
    return MediaToolError(ProcessFailed{std::move(tool), status, std::move(message)});
}

} // namespace stackreel
