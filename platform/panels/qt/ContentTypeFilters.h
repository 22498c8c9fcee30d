#pragma once

#include "platform/panels/OpenPanel.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace stackreel
{

/// The name filters of a file dialog for a list of content types.
struct ContentTypeFilters {
    /// One filter for each type, in the given order: "Videos (*.mp4 *.mov)". All files for an empty list.
    static QStringList names(const std::vector<ContentType>& types);
    /// The filter selected at first: the one for all files if there is one, as it hides nothing, else the
    /// first.
    static QString initial(const std::vector<ContentType>& types);
    /// The suffix, without the dot, that a saved file gets when there is exactly one type. None when there
    /// are several types, or no restriction.
    static std::optional<QString> requiredSuffix(const std::vector<ContentType>& types);
};

} // namespace stackreel
