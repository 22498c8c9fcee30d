#include "model/Phase.h"

namespace stackreel
{

std::string Phase::message(const std::optional<std::filesystem::path>& source) const
{
    switch (m_kind) {
    case Kind::empty:
        return "Choose a horizontal video to begin.";
    case Kind::preparing:
        return "Preparing a smooth looping preview.";
    case Kind::ready:
        return source ? source->filename().string() : "Ready";
    case Kind::exporting:
        return "Rendering from the original video.";
    case Kind::complete:
        return "Saved " + std::filesystem::path(m_payload).filename().string();
    case Kind::failed:
        break;
    }
    return m_payload;
}

} // namespace stackreel
