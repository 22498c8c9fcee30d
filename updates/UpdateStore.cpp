#include "updates/UpdateStore.h"

#include "system/StateFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr const char* lastCheckKey = "lastCheck";
constexpr const char* newestSerialKey = "newestSerial";
constexpr std::chrono::seconds patience(1);

QString nameOf(const std::filesystem::path& file)
{
    return QFile::decodeName(QByteArray::fromStdString(file.string()));
}

/// The first bytes of a file, enough for everything that `write` writes. Empty when the file cannot be read.
QByteArray contentOf(const QString& name)
{
    constexpr qint64 maxBytes = 4096;
    QFile file(name);
    // Do not open a named pipe: that would block.
    if (!QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    return file.read(maxBytes);
}

std::optional<std::int64_t> numberOf(const QByteArray& content, const QByteArray& key)
{
    for (const QByteArray& line : content.split('\n')) {
        if (!line.startsWith(key + '='))
            continue;
        bool isNumber = false;
        const qlonglong number = line.mid(key.size() + 1).trimmed().toLongLong(&isNumber);
        return isNumber ? std::optional<std::int64_t>(number) : std::nullopt;
    }
    return std::nullopt;
}

QByteArray lineOf(const char* key, std::int64_t number)
{
    return QByteArray(key) + '=' + QByteArray::number(static_cast<qlonglong>(number)) + '\n';
}

std::int64_t secondsOf(UpdateStore::Time time)
{
    return std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
}

} // namespace

std::filesystem::path UpdateStore::standardFile()
{
    return stateFolder() / "updates.ini";
}

void UpdateStore::setLastCheck(Time time)
{
    m_unsavedCheck = Time(std::chrono::seconds(secondsOf(time)));
    save();
}

void UpdateStore::setNewestSerial(std::int64_t serial)
{
    if (serial <= newestSerial())
        return;
    m_newestSerial = serial;
    save();
}

UpdateStore::State UpdateStore::state() const
{
    State current = storedState();
    if (m_unsavedCheck)
        current.lastCheck = m_unsavedCheck;
    current.newestSerial = std::max(current.newestSerial, m_newestSerial);
    return current;
}

UpdateStore::State UpdateStore::storedState() const
{
    // This is in the year 2255. The clock's type overflows soon after that.
    constexpr std::int64_t latest = 9'000'000'000;
    const QByteArray content = contentOf(nameOf(m_file));
    State stored;
    const auto seconds = numberOf(content, lastCheckKey);
    if (seconds && *seconds >= 0 && *seconds <= latest)
        stored.lastCheck = Time(std::chrono::seconds(*seconds));
    stored.newestSerial = std::max<std::int64_t>(0, numberOf(content, newestSerialKey).value_or(0));
    return stored;
}

void UpdateStore::save()
{
    const QString name = nameOf(m_file);
    QDir().mkpath(QFileInfo(name).path());
    // Lock before reading: a serial that another process stores between the reading and the writing would be
    // lost.
    QLockFile lock(name + QStringLiteral(".lock"));
    if (!lock.tryLock(patience))
        return;
    const State next = state();
    m_newestSerial = next.newestSerial;
    if (write(next))
        m_unsavedCheck.reset();
}

bool UpdateStore::write(const State& state) const
{
    QSaveFile file(nameOf(m_file));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write("[General]\n");
    if (state.lastCheck)
        file.write(lineOf(lastCheckKey, secondsOf(*state.lastCheck)));
    file.write(lineOf(newestSerialKey, state.newestSerial));
    return file.commit();
}

} // namespace stackreel
