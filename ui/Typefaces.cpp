#include "ui/Typefaces.h"

#include <QFontDatabase>

namespace stackreel
{

namespace
{

QString installedOr(const QString& family, const QString& fallback)
{
    return QFontDatabase::hasFamily(family) ? family : fallback;
}

} // namespace

QString Typefaces::text()
{
    return installedOr(QStringLiteral("Inter"),
                       QFontDatabase::systemFont(QFontDatabase::GeneralFont).family());
}

QString Typefaces::title()
{
    return installedOr(QStringLiteral("Dosis"), text());
}

QString Typefaces::fixed()
{
    return installedOr(QStringLiteral("JetBrains Mono"),
                       QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
}

} // namespace stackreel
