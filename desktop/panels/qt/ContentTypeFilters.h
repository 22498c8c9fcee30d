#pragma once

#include "desktop/panels/OpenPanel.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace stackreel
{

/// The name filters of a file dialog for a list of content types.
struct ContentTypeFilters {
    /// One filter for each type, in the given order: "Videos (*.mp4 *.mov)". For an empty list, the filter
    /// for all files.
    static QStringList names(const std::vector<ContentType>& types);
    /// The filter that is selected at first: the one for all files if there is one, because it hides nothing,
    /// otherwise the first filter.
    static QString initial(const std::vector<ContentType>& types);
    /// The suffix, without the dot, that a saved file gets when there is exactly one type. Returns
    /// `std::nullopt` when there are several types, or when any type is allowed.
    static std::optional<QString> requiredSuffix(const std::vector<ContentType>& types);
};

} // namespace stackreel
