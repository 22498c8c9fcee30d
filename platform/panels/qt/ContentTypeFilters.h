#pragma once

#include "platform/panels/OpenPanel.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace stackreel
{

/// Content types as a file dialog offers them.
struct ContentTypeFilters {
    /// One line for each type, in the order given: "Videos (*.mp4 *.mov)". All files for no type at all.
    static QStringList names(const std::vector<ContentType>& types);
    /// The line to begin with: the one for all files where there is one, as it hides nothing, else the first.
    static QString initial(const std::vector<ContentType>& types);
    /// The suffix, without the dot, that a saved file gets: that of the only type. None where there is a
    /// choice, or no restriction.
    static std::optional<QString> requiredSuffix(const std::vector<ContentType>& types);
};

} // namespace stackreel
