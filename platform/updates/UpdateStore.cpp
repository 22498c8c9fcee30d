#include "platform/updates/UpdateStore.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr const char* lastCheckKey = "lastCheck";
constexpr const char* newestSerialKey = "newestSerial";

QString settingsFile(const std::filesystem::path& file)
{
    return QFile::decodeName(QByteArray::fromStdString(file.string()));
}

} // namespace

std::filesystem::path UpdateStore::standardFile()
{
    std::filesystem::path folder = qgetenv("XDG_STATE_HOME").toStdString();
    if (!folder.is_absolute())
        folder =
            std::filesystem::path(QFile::encodeName(QDir::homePath()).toStdString()) / ".local" / "state";
    return folder / "stackreel" / "updates.ini";
}

std::optional<UpdateStore::Time> UpdateStore::lastCheck() const
{
    const auto seconds = number(lastCheckKey);
    // In the year 2255; the clock cannot hold times much later than that.
    constexpr std::int64_t latest = 9'000'000'000;
    if (!seconds || *seconds < 0 || *seconds > latest)
        return std::nullopt;
    return Time(std::chrono::seconds(*seconds));
}

void UpdateStore::setLastCheck(Time time)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch());
    setNumber(lastCheckKey, seconds.count());
}

std::int64_t UpdateStore::newestSerial() const
{
    return std::max<std::int64_t>(0, number(newestSerialKey).value_or(0));
}

void UpdateStore::setNewestSerial(std::int64_t serial)
{
    if (serial > newestSerial())
        setNumber(newestSerialKey, serial);
}

std::optional<std::int64_t> UpdateStore::number(const char* key) const
{
    const QSettings settings(settingsFile(m_file), QSettings::IniFormat);
    bool isNumber = false;
    const qlonglong number = settings.value(QLatin1String(key)).toString().toLongLong(&isNumber);
    return isNumber ? std::optional<std::int64_t>(number) : std::nullopt;
}

void UpdateStore::setNumber(const char* key, std::int64_t number)
{
    QSettings settings(settingsFile(m_file), QSettings::IniFormat);
    settings.setValue(QLatin1String(key), QString::number(number));
}

} // namespace stackreel
