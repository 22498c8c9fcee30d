#include "cli/Failure.h"

#include "cli/CliError.h"
#include "cli/FailureText.h"
#include "cli/PrintableText.h"
#include "cli/UsageError.h"
#include "media/CancellationError.h"
#include "media/ProbeDocument.h"
#include "media/TemporaryFolderFull.h"
#include "model/ExportError.h"
#include "system/SystemError.h"
#include "system/TerminationSignals.h"

namespace stackreel
{

namespace
{

struct CodeOf {
    std::string operator()(const MediaToolError::ToolMissing&) const { return "tool-missing"; }
    std::string operator()(const MediaToolError::ProcessFailed&) const { return "tool-failed"; }
    std::string operator()(const MediaToolError::InvalidProbe&) const { return "unreadable-source"; }
    std::string operator()(const MediaToolError::NoVideo&) const { return "no-video"; }
    std::string operator()(const MediaToolError::VerticalSource&) const { return "vertical-source"; }
    std::string operator()(const MediaToolError::Cancelled&) const { return "cancelled"; }
};

Failure cancelled()
{
    return {.code = "cancelled", .sentence = "Cancelled.", .toolLines = "", .hint = ""};
}

Failure simple(const char* code, const std::exception& error)
{
    return {.code = code, .sentence = error.what(), .toolLines = "", .hint = ""};
}

Failure ofTool(const MediaToolError& error)
{
    FailureText text = FailureText::of(error);
    return {.code = std::visit(CodeOf(), error.value()),
            .sentence = std::move(text.sentence),
            .toolLines = std::move(text.toolLines),
            .hint = ""};
}

} // namespace

Failure Failure::of(const std::exception_ptr& error)
{
    if (TerminationSignals::haveArrived())
        return cancelled();
    try {
        std::rethrow_exception(error);
    } catch (const CancellationError&) {
        return cancelled();
    } catch (const UsageError& usage) {
        return {
            .status = 2, .code = "usage", .sentence = usage.what(), .toolLines = "", .hint = usage.hint()};
    } catch (const MediaToolError& tool) {
        return ofTool(tool);
    } catch (const DecodingError& decoding) {
        return simple("unreadable-source", decoding);
    } catch (const TemporaryFolderFull& full) {
        return simple("temporary-folder-full", full);
    } catch (const SystemError& system) {
        return simple("system", system);
    } catch (const ExportError& exporting) {
        return simple("export", exporting);
    } catch (const CliError& refused) {
        return simple("refused", refused);
    } catch (const std::exception& other) {
        return simple("other", other);
    }
}

std::string Failure::text() const
{
    std::string text = sentence;
    for (const std::string& part : {toolLines, hint})
        if (!part.empty())
            text += "\n" + part;
    return printableText(text);
}

} // namespace stackreel
