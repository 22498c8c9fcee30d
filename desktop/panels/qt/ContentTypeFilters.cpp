#include "desktop/panels/qt/ContentTypeFilters.h"

#include <algorithm>

namespace stackreel
{

namespace
{

QString name(ContentType type)
{
    switch (type) {
    case ContentType::audiovisualContent:
        return QStringLiteral("Video and audio (*.mp4 *.m4v *.mov *.mkv *.webm *.avi *.mts *.m2ts *.ts *.mpg "
                              "*.mpeg *.wmv *.flv *.ogv *.3gp *.mxf *.mp3 *.m4a *.aac *.wav *.flac *.ogg)");
    case ContentType::movie:
        return QStringLiteral("Videos (*.mp4 *.m4v *.mov *.mkv *.webm *.avi *.mts *.m2ts *.ts *.mpg *.mpeg "
                              "*.wmv *.flv *.ogv *.3gp *.mxf)");
    case ContentType::mp4:
        return QStringLiteral("MPEG-4 videos (*.mp4)");
    case ContentType::data:
        break;
    }
    return QStringLiteral("All files (*)");
}

} // namespace

QStringList ContentTypeFilters::names(const std::vector<ContentType>& types)
{
    QStringList lines;
    for (const ContentType type : types)
        lines.append(name(type));
    return lines.isEmpty() ? QStringList(name(ContentType::data)) : lines;
}

QString ContentTypeFilters::initial(const std::vector<ContentType>& types)
{
    const bool anyFile = std::find(types.begin(), types.end(), ContentType::data) != types.end();
    return anyFile ? name(ContentType::data) : names(types).constFirst();
}

std::optional<QString> ContentTypeFilters::requiredSuffix(const std::vector<ContentType>& types)
{
    if (types.size() == 1 && types.front() == ContentType::mp4)
        return QStringLiteral("mp4");
    return std::nullopt;
}

} // namespace stackreel
